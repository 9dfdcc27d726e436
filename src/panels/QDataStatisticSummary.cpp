#include "QDataStatisticSummary.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QTextDocument>
#include <QTextEdit>

namespace rkBase {

namespace {
QString summaryText(const char* text)
{
    return QCoreApplication::translate("QDataStatisticSummary", text);
}
} // namespace

QDataStatisticSummary::QDataStatisticSummary(QWidget* parent) : QWidget(parent)
{
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_textEdit = new QTextEdit(this);
    m_textEdit->setReadOnly(true);
    layout->addWidget(m_textEdit, 0, 0);
    m_document = new QTextDocument(this);
}

QDataStatisticSummary::~QDataStatisticSummary() = default;

void QDataStatisticSummary::newDocument(QString const& dataName)
{
    m_html += QStringLiteral("<table border=\"0\" cellpadding=\"0\" cellspacing=\"6\" width=\"100%\">");
    m_html += QStringLiteral("<tr><td colspan=\"2\"><h1 style=\"font-size: large\">%1</h1></td></tr>")
                  .arg(summaryText("Summary of the Statistical Investigations of Spherical Data"));
    appendRow(summaryText("Observation Data"), dataName);
}

void QDataStatisticSummary::newTable(QString const& title)
{
    m_html += QStringLiteral("<tr><th colspan=\"3\" align=\"left\"><br/>%1</th></tr>").arg(title);
}

void QDataStatisticSummary::appendRow(QString const& label, QString const& value)
{
    // Both at once: a label holding "%2" must not swallow the value.
    m_html += QStringLiteral("<tr><td style=\"white-space: nowrap;\">%1:</td>"
                             "<td style=\"white-space: nowrap;\" align=\"right\">%2</td></tr>")
                  .arg(label, value);
}

void QDataStatisticSummary::updateDocument()
{
    m_html += QStringLiteral("</table>");
    m_document->setHtml(m_html);
    m_textEdit->setDocument(m_document);
    m_shownHtml = m_html;
    m_html.clear();
}

} // namespace rkBase
