#include "QDecoratedToolBox.h"

#include <QComboBox>
#include <QEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QStyle>

#include <algorithm>

namespace {

// Shaded bold headers; the open page's header in the highlight colour. Palette references keep
// the headers readable on whatever palette the host gives.
const char* const kHeaderStyle =
    "QToolBox::tab {"
    " font-weight: bold;"
    " border: 1px solid palette(mid);"
    " border-radius: 3px;"
    " padding-left: 4px;"
    " color: palette(button-text);"
    " background: qlineargradient(x1: 0, y1: 0, x2: 0, y2: 1, stop: 0 palette(light), stop: 1 palette(button));"
    "}"
    "QToolBox::tab:selected {"
    " color: palette(highlighted-text);"
    " background: qlineargradient(x1: 0, y1: 0, x2: 0, y2: 1, stop: 0 palette(highlight), stop: 1 palette(dark));"
    "}";

QIcon triangleIcon(const QColor& colour, bool open)
{
    const int side = 12;
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    QPainterPath path;
    if (open) {
        path.moveTo(2, 3);
        path.lineTo(10, 3);
        path.lineTo(6, 9);
    } else {
        path.moveTo(3, 2);
        path.lineTo(9, 6);
        path.lineTo(3, 10);
    }
    path.closeSubpath();
    painter.drawPath(path);
    return QIcon(pixmap);
}

} // namespace

QDecoratedToolBox::QDecoratedToolBox(QWidget* parent, Qt::WindowFlags flags) : QToolBox(parent, flags)
{
    setStyleSheet(QString::fromLatin1(kHeaderStyle));
    makeMarkers();
    connect(this, &QToolBox::currentChanged, this, &QDecoratedToolBox::markPages);
}

QDecoratedToolBox::~QDecoratedToolBox() = default;

void QDecoratedToolBox::itemInserted(int index)
{
    QToolBox::itemInserted(index);
    // A selection box fills with the sheet's column names: without this, one long name would
    // widen the page, and with it the whole side panel.
    if (QWidget* page = widget(index)) {
        for (QComboBox* box : page->findChildren<QComboBox*>()) {
            box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
            box->setMinimumContentsLength(kBoxCharacters);
        }
    }
    markPages();
}

void QDecoratedToolBox::itemRemoved(int index)
{
    QToolBox::itemRemoved(index);
    markPages();
}

void QDecoratedToolBox::changeEvent(QEvent* event)
{
    QToolBox::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        makeMarkers();
        markPages();
    }
}

void QDecoratedToolBox::makeMarkers()
{
    m_open = triangleIcon(palette().color(QPalette::HighlightedText), true);
    m_closed = triangleIcon(palette().color(QPalette::ButtonText), false);
}

void QDecoratedToolBox::markPages()
{
    const int open = currentIndex();
    for (int i = 0; i < count(); ++i)
        setItemIcon(i, i == open ? m_open : m_closed);
}

QSize QDecoratedToolBox::minimumSizeHint() const
{
    QSize size = QToolBox::minimumSizeHint();
    int widest = 0;
    for (int i = 0; i < count(); ++i)
        if (const QWidget* page = widget(i))
            widest = std::max(widest, page->minimumSizeHint().width());
    if (widest <= 0)
        return size;
    // Each page sits in a scroll area: room for its frame and a vertical scroll bar besides.
    const int extra = 2 * frameWidth() + style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 4;
    size.setWidth(std::max(size.width(), std::min(widest + extra, kMostWidth)));
    return size;
}
