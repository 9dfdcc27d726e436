#include "FloatingTabBar.h"

#include <QApplication>
#include <QMouseEvent>

namespace rkBase {

FloatingTabBar::FloatingTabBar(QWidget* parent) : QTabBar(parent) {}

void FloatingTabBar::mouseDoubleClickEvent(QMouseEvent* event)
{
    const int index = tabAt(event->pos());
    if (index >= 0 && event->button() == Qt::LeftButton) {
        emit detachRequested(index, event->globalPos());
        event->accept();
        return;
    }
    QTabBar::mouseDoubleClickEvent(event);
}

void FloatingTabBar::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        m_pressedTab = tabAt(event->pos());
        m_pressPos = event->pos();
    }
    QTabBar::mousePressEvent(event);
}

void FloatingTabBar::mouseMoveEvent(QMouseEvent* event)
{
    // Moving a tab along the bar reorders as usual; pulling it clearly off the bar floats it.
    if (m_pressedTab >= 0 && (event->buttons() & Qt::LeftButton)) {
        const int margin = 3 * QApplication::startDragDistance() + height();
        const QRect zone = rect().adjusted(-margin, -margin, margin, margin);
        if (!zone.contains(event->pos())) {
            const int index = m_pressedTab;
            m_pressedTab = -1;
            emit detachRequested(index, event->globalPos());
            return;
        }
    }
    QTabBar::mouseMoveEvent(event);
}

void FloatingTabBar::mouseReleaseEvent(QMouseEvent* event)
{
    m_pressedTab = -1;
    QTabBar::mouseReleaseEvent(event);
}

} // namespace rkBase
