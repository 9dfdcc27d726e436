#pragma once
// The tab bar of the analyser's chart tabs: a double-click on a tab, or dragging a tab well out
// of the bar, asks for that tab to float in a window of its own.

#include <QPoint>
#include <QTabBar>

namespace rkBase {

class FloatingTabBar : public QTabBar
{
    Q_OBJECT
public:
    explicit FloatingTabBar(QWidget* parent = nullptr);

signals:
    void detachRequested(int index, const QPoint& globalPos);

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    int m_pressedTab = -1;
    QPoint m_pressPos;
};

} // namespace rkBase
