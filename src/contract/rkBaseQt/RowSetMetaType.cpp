#include "RowSetMetaType.h"

namespace rkBase {

void registerRowSetMetaType()
{
    static const int id = qRegisterMetaType<boost::dynamic_bitset<>>();
    Q_UNUSED(id)
}

} // namespace rkBase
