#include "PanelColorButton.h"

#include <QColorDialog>
#include <QPixmap>
#include <QPushButton>
#include <QVariant>

namespace rkBase {

namespace {
const char* const kColorProperty = "rkPanelColor";

PanelColorButton::ColorDialog& dialogFunction()
{
    static PanelColorButton::ColorDialog dialog;
    return dialog;
}
} // namespace

void PanelColorButton::setColor(QPushButton* button, const QColor& colour)
{
    if (!button || !colour.isValid())
        return;
    QPixmap swatch(10, 10);
    swatch.fill(colour);
    button->setIcon(QIcon(swatch));
    button->setProperty(kColorProperty, colour);
}

QColor PanelColorButton::color(const QPushButton* button, const QColor& fallback)
{
    if (!button)
        return fallback;
    const QColor colour = button->property(kColorProperty).value<QColor>();
    return colour.isValid() ? colour : fallback;
}

QColor PanelColorButton::pick(QPushButton* button, const QColor& fallback)
{
    const QColor chosen = askColor(color(button, fallback), button ? button->window() : nullptr);
    if (chosen.isValid())
        setColor(button, chosen);
    return chosen;
}

void PanelColorButton::setColorDialog(ColorDialog dialog)
{
    dialogFunction() = std::move(dialog);
}

QColor PanelColorButton::askColor(const QColor& initial, QWidget* parent, const QString& title)
{
    if (dialogFunction())
        return dialogFunction()(initial, parent, title);
    return QColorDialog::getColor(initial, parent, title);
}

} // namespace rkBase
