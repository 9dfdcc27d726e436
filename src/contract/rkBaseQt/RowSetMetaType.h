#pragma once
// A set of rows, one bit per row (boost::dynamic_bitset<>), as a Qt meta-type: the charts'
// dataPointsSelection signal carries one, and a QSignalSpy, a QVariant or a queued connection
// (a host's receiver in another thread, or a connection made with Qt::QueuedConnection) can
// only copy it once Qt knows the type. Declared here once for the whole library; a host must
// not declare it again.

#include <QMetaType>

#include <boost/dynamic_bitset.hpp>

Q_DECLARE_METATYPE(boost::dynamic_bitset<>)

namespace rkBase {

// Registers the type under its name, which a queued connection looks it up by. Calling it again
// does nothing more; every chart calls it when it is built.
void registerRowSetMetaType();

} // namespace rkBase
