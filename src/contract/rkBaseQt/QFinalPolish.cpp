#include "QFinalPolish.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QWidget>

namespace rkBase {

void QFinalPolish(QWidget* window)
{
    if (!window)
        return;
    for (QAbstractSpinBox* box : window->findChildren<QAbstractSpinBox*>()) {
        box->setKeyboardTracking(false);
        box->setCorrectionMode(QAbstractSpinBox::CorrectToNearestValue);
    }
    for (QComboBox* box : window->findChildren<QComboBox*>()) {
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        if (box->minimumContentsLength() == 0)
            box->setMinimumContentsLength(12);
    }
    window->ensurePolished();
    for (QWidget* child : window->findChildren<QWidget*>())
        child->ensurePolished();
}

} // namespace rkBase
