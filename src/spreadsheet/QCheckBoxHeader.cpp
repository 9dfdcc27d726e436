#include "QCheckBoxHeader.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionButton>

namespace rkBase {

QCheckBoxHeader::QCheckBoxHeader(Qt::Orientation orientation, QWidget* parent) : QHeaderView(orientation, parent)
{
    setSectionsClickable(true);
}

void QCheckBoxHeader::setIsChecked(bool checked)
{
    if (m_isChecked == checked)
        return;
    m_isChecked = checked;
    m_checkState = checked ? Qt::Checked : Qt::Unchecked;
    redrawCheckBox();
}

void QCheckBoxHeader::setCheckState(Qt::CheckState state)
{
    m_checkState = state;
    m_isChecked = state == Qt::Checked;
    redrawCheckBox();
}

void QCheckBoxHeader::redrawCheckBox()
{
    viewport()->update();
}

void QCheckBoxHeader::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const
{
    painter->save();
    QHeaderView::paintSection(painter, rect, logicalIndex);
    painter->restore();
    if (logicalIndex != 0)
        return;
    QStyleOptionButton option;
    option.rect = QRect(rect.x() + 1, rect.y() + 3, 20, 20);
    option.state = QStyle::State_Active | QStyle::State_Enabled;
    if (m_checkState == Qt::Checked)
        option.state |= QStyle::State_On;
    else if (m_checkState == Qt::PartiallyChecked)
        option.state |= QStyle::State_NoChange;
    else
        option.state |= QStyle::State_Off;
    style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, painter);
}

void QCheckBoxHeader::mousePressEvent(QMouseEvent* event)
{
    if (logicalIndexAt(event->pos()) == 0) {
        m_isChecked = !m_isChecked;
        m_checkState = m_isChecked ? Qt::Checked : Qt::Unchecked;
        redrawCheckBox();
        emit checkBoxClicked(m_isChecked);
    }
    QHeaderView::mousePressEvent(event);
}

} // namespace rkBase
