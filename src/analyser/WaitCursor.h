#pragma once
// The wait cursor for as long as an update of the window blocks the GUI thread; restored on every
// way out of the scope.

#include <QGuiApplication>

namespace rkBase {

class WaitCursor
{
public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

} // namespace rkBase
