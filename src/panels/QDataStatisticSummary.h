#pragma once
// The statistics report of the stereo panel: an HTML table built row by row and shown in a
// read-only text edit. newDocument() opens the table, newTable() starts a section, appendRow()
// adds a label and its value, and updateDocument() closes the table and shows it. The buffer is
// emptied when shown, so the next report starts from nothing.

#include <QString>
#include <QWidget>

class QTextDocument;
class QTextEdit;

namespace rkBase {

class QDataStatisticSummary : public QWidget
{
    Q_OBJECT
public:
    explicit QDataStatisticSummary(QWidget* parent = nullptr);
    ~QDataStatisticSummary() override;

    void newDocument(QString const& dataName);
    void newTable(QString const& title);
    void appendRow(QString const& label, QString const& value);
    void updateDocument();

    // The HTML handed to the document by the last updateDocument(), as given (the document's
    // own toHtml() rewrites it).
    QString documentHtml() const { return m_shownHtml; }
    // What has been appended since the last updateDocument().
    QString pendingHtml() const { return m_html; }
    QTextDocument* document() const { return m_document; }
    QTextEdit* textEdit() const { return m_textEdit; }

private:
    QString m_html;
    QString m_shownHtml;
    QTextEdit* m_textEdit = nullptr;
    QTextDocument* m_document = nullptr;
};

} // namespace rkBase
