// The bar chart's filter step: how many rows one bar stands for.
#include "MatrixData.h"

#include <limits>

namespace rkBase {

int MatrixData::defaultFilterStepSize(int rows) const
{
    if (m_defaultFilterStep > 0)
        return m_defaultFilterStep;
    const long long n = rows > 0 ? rows : m_validRows;
    // Steps of 1, 2 and 5 times a power of ten keep the rows of each bar easy to read off
    // ("rows 1,001 to 1,050"), which an exact rows / bars quotient would not.
    static const int kMantissa[] = {1, 2, 5};
    for (long long decade = 1; decade <= std::numeric_limits<int>::max(); decade *= 10)
        for (int m : kMantissa) {
            const long long step = m * decade;
            if (step > std::numeric_limits<int>::max())
                return std::numeric_limits<int>::max();
            if ((n + step - 1) / step <= kDefaultFilterBars)
                return static_cast<int>(step);
        }
    return std::numeric_limits<int>::max();
}

bool MatrixData::setDefaultFilterStepSize(int step)
{
    if (step < 1)
        return false;
    m_defaultFilterStep = step;
    return true;
}

void MatrixData::resetDefaultFilterStepSize()
{
    m_defaultFilterStep = -1;
}

} // namespace rkBase
