#pragma once
// The analyser's tab widget: the table and every chart are tabs, and any tab can be torn off
// into a window of its own (double-click or drag the tab) and docked back (close that window or
// double-click it). Pages keep their objectName wherever they are, so code that finds a page
// by key keeps working; a floating page is simply not in the tab widget until it docks.

#include <QTabWidget>

#include <vector>

namespace rkBase {

class FloatingTabWindow;

class TabWidgetWithFloatingTabs : public QTabWidget
{
    Q_OBJECT
public:
    explicit TabWidgetWithFloatingTabs(QWidget* parent = nullptr);
    ~TabWidgetWithFloatingTabs() override;

    // False for an index out of range or when the last docked tab would go.
    bool floatTab(int index);
    bool dockTab(QWidget* page);
    void dockAll();
    bool isFloating(const QWidget* page) const;
    std::vector<QWidget*> floatingPages() const;
    // A page by its key, docked or floating; null when unknown.
    QWidget* findPage(const QString& key) const;

signals:
    void tabFloated(QWidget* page);
    void tabDocked(QWidget* page);

protected:
    void tabInserted(int index) override;

private slots:
    void onDetachRequested(int index, const QPoint& globalPos);
    void onDockRequested(rkBase::FloatingTabWindow* window);

private:
    FloatingTabWindow* windowOf(const QWidget* page) const;
    // Deletes the windows whose page is gone or docked again.
    void retireWindows();
    std::vector<FloatingTabWindow*> m_windows;
};

} // namespace rkBase
