#include "TabWidgetWithFloatingTabs.h"

#include "FloatingTabBar.h"
#include "FloatingTabWindow.h"

#include <algorithm>

namespace rkBase {

TabWidgetWithFloatingTabs::TabWidgetWithFloatingTabs(QWidget* parent) : QTabWidget(parent)
{
    auto* bar = new FloatingTabBar(this);
    setTabBar(bar);
    setMovable(true);
    connect(bar, SIGNAL(detachRequested(int, QPoint)), this, SLOT(onDetachRequested(int, QPoint)));
}

TabWidgetWithFloatingTabs::~TabWidgetWithFloatingTabs()
{
    // Floating pages belong to this widget's owner like docked ones: bring them home so they
    // are deleted with it and not left in orphaned windows.
    for (FloatingTabWindow* w : m_windows) {
        if (QWidget* page = w->page())
            page->setParent(this);
        w->release();
        delete w;
    }
}

FloatingTabWindow* TabWidgetWithFloatingTabs::windowOf(const QWidget* page) const
{
    for (FloatingTabWindow* w : m_windows)
        if (w->page() == page)
            return w;
    return nullptr;
}

bool TabWidgetWithFloatingTabs::floatTab(int index)
{
    if (index < 0 || index >= count() || count() < 2)
        return false;
    QWidget* page = widget(index);
    const QString title = tabText(index);
    const QIcon icon = tabIcon(index);
    const QSize size = page->size();
    removeTab(index);
    // The window is a child of this widget's window, so it stays above it and dies with it.
    auto* floating = new FloatingTabWindow(page, title, icon, index, window());
    connect(floating, SIGNAL(dockRequested(rkBase::FloatingTabWindow*)), this,
            SLOT(onDockRequested(rkBase::FloatingTabWindow*)));
    m_windows.push_back(floating);
    floating->resize(size.expandedTo(QSize(320, 240)));
    floating->show();
    emit tabFloated(page);
    return true;
}

void TabWidgetWithFloatingTabs::onDetachRequested(int index, const QPoint& globalPos)
{
    QWidget* page = widget(index);
    if (!floatTab(index))
        return;
    if (FloatingTabWindow* w = windowOf(page))
        w->move(globalPos - QPoint(40, 10));
}

bool TabWidgetWithFloatingTabs::dockTab(QWidget* page)
{
    FloatingTabWindow* w = windowOf(page);
    if (!w)
        return false;
    const int at = std::min(w->homeIndex(), count());
    const QString title = w->title();
    const QIcon icon = w->icon();
    // insertTab reparents the page; tabInserted then retires the window.
    insertTab(at, page, icon, title);
    setCurrentWidget(page);
    emit tabDocked(page);
    return true;
}

void TabWidgetWithFloatingTabs::onDockRequested(FloatingTabWindow* window)
{
    if (window && window->page())
        dockTab(window->page());
}

void TabWidgetWithFloatingTabs::dockAll()
{
    while (!m_windows.empty()) {
        FloatingTabWindow* w = m_windows.back();
        if (w->page())
            dockTab(w->page());
        else
            retireWindows();
    }
}

void TabWidgetWithFloatingTabs::tabInserted(int index)
{
    QTabWidget::tabInserted(index);
    // A page that comes back by any path (dockTab, or a plain addTab by a caller that found it
    // by key) leaves its window behind.
    retireWindows();
}

void TabWidgetWithFloatingTabs::retireWindows()
{
    for (auto it = m_windows.begin(); it != m_windows.end();) {
        FloatingTabWindow* w = *it;
        QWidget* page = w->page();
        if (!page || indexOf(page) >= 0) {
            w->release();
            w->hide();
            w->deleteLater();
            it = m_windows.erase(it);
        } else {
            ++it;
        }
    }
}

bool TabWidgetWithFloatingTabs::isFloating(const QWidget* page) const
{
    return windowOf(page) != nullptr;
}

std::vector<QWidget*> TabWidgetWithFloatingTabs::floatingPages() const
{
    std::vector<QWidget*> out;
    for (FloatingTabWindow* w : m_windows)
        if (w->page())
            out.push_back(w->page());
    return out;
}

QWidget* TabWidgetWithFloatingTabs::findPage(const QString& key) const
{
    for (int i = 0; i < count(); ++i)
        if (widget(i)->objectName() == key)
            return widget(i);
    for (FloatingTabWindow* w : m_windows)
        if (w->page() && w->page()->objectName() == key)
            return w->page();
    return nullptr;
}

} // namespace rkBase
