#pragma once
// A horizontal header whose first section carries a check box, for sheets whose rows can be
// ticked all at once.

#include <QHeaderView>

namespace rkBase {

class QCheckBoxHeader : public QHeaderView
{
    Q_OBJECT
public:
    explicit QCheckBoxHeader(Qt::Orientation orientation, QWidget* parent = nullptr);

    bool isChecked() const { return m_isChecked; }
    void setIsChecked(bool checked);
    Qt::CheckState checkState() const { return m_checkState; }
    void setCheckState(Qt::CheckState state);
    void redrawCheckBox();

signals:
    void checkBoxClicked(bool state);

protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    bool m_isChecked = false;
    Qt::CheckState m_checkState = Qt::Unchecked;
};

} // namespace rkBase
