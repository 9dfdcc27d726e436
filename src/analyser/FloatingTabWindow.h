#pragma once
// A tool window that holds one page torn off the analyser's tab widget. Closing it, or a
// double-click on its dock-back strip, returns the page to the tab widget.

#include <QIcon>
#include <QPointer>
#include <QWidget>

namespace rkBase {

class FloatingTabWindow : public QWidget
{
    Q_OBJECT
public:
    FloatingTabWindow(QWidget* page, const QString& title, const QIcon& icon, int homeIndex, QWidget* parent);

    QWidget* page() const { return m_page; }
    QString title() const { return m_title; }
    QIcon icon() const { return m_icon; }
    int homeIndex() const { return m_homeIndex; }
    // Lets the page go without docking it (it has been put somewhere else).
    void release() { m_page = nullptr; }

signals:
    void dockRequested(rkBase::FloatingTabWindow* window);

protected:
    void closeEvent(QCloseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    QPointer<QWidget> m_page;
    QString m_title;
    QIcon m_icon;
    int m_homeIndex;
};

} // namespace rkBase
