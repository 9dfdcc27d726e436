#pragma once
// The last touch on a finished window: spin boxes apply their value when editing ends rather
// than on every key, combo boxes keep long attribute names from widening their panels, and every
// child is polished once so the first paint has its final sizes.

class QWidget;

namespace rkBase {

void QFinalPolish(QWidget* window);

} // namespace rkBase
