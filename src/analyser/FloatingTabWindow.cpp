#include "FloatingTabWindow.h"

#include <QCloseEvent>
#include <QLabel>
#include <QVBoxLayout>

namespace rkBase {

FloatingTabWindow::FloatingTabWindow(QWidget* page, const QString& title, const QIcon& icon, int homeIndex, QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::Tool), m_page(page), m_title(title), m_icon(icon), m_homeIndex(homeIndex)
{
    setWindowTitle(title);
    setWindowIcon(icon);
    setAttribute(Qt::WA_DeleteOnClose, false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto* strip = new QLabel(tr("Double-click here or close the window to dock \"%1\" again").arg(title), this);
    strip->setObjectName(QStringLiteral("dockStrip"));
    strip->setContentsMargins(6, 2, 6, 2);
    strip->setStyleSheet(QStringLiteral("QLabel#dockStrip { background: palette(mid); color: palette(bright-text); }"));
    layout->addWidget(strip);
    layout->addWidget(page, 1);
    page->show();
}

void FloatingTabWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    emit dockRequested(this);
}

void FloatingTabWindow::mouseDoubleClickEvent(QMouseEvent*)
{
    emit dockRequested(this);
}

} // namespace rkBase
