#pragma once
// A push button that shows a colour as a 10 x 10 swatch and opens a colour dialog (the point
// and line colours of the cross plot, the stereonet's and rose diagram's colours). The colour is
// kept on the button itself, so that a panel has one place to read it from.

#include <QColor>
#include <QString>

#include <functional>

class QPushButton;
class QWidget;

namespace rkBase {

class PanelColorButton
{
public:
    // Asks the user for a colour; an invalid colour means cancelled. Tests put their own in.
    using ColorDialog = std::function<QColor(const QColor& initial, QWidget* parent, const QString& title)>;

    // Shows colour on the button (an invalid colour shows nothing and is not kept).
    static void setColor(QPushButton* button, const QColor& colour);
    // The colour shown, or fallback when the button holds none.
    static QColor color(const QPushButton* button, const QColor& fallback = QColor());
    // The dialog with the button's colour (or fallback); a chosen colour is shown on the button
    // and returned, a cancel returns an invalid colour and leaves the button as it was.
    static QColor pick(QPushButton* button, const QColor& fallback);

    static void setColorDialog(ColorDialog dialog);
    static QColor askColor(const QColor& initial, QWidget* parent, const QString& title = QString());
};

} // namespace rkBase
