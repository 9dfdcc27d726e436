#include "DepthLineField.h"

namespace rkBase {

DepthLineField::DepthLineField(const QString& name)
    : m_name(name)
{
}

DepthLineField::~DepthLineField() = default;

} // namespace rkBase
