#include "QDataStatisticSummary.h"

#include <QGridLayout>
#include <QTextDocument>
#include <QTextEdit>

namespace rkBase {

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

void QDataStatisticSummary::newDocument(QString const&) {}
void QDataStatisticSummary::newTable(QString const&) {}
void QDataStatisticSummary::appendRow(QString const&, QString const&) {}
void QDataStatisticSummary::updateDocument() {}

} // namespace rkBase
