// Feeds arbitrary bytes to the scenario reader. Whatever it keeps must be a well-formed field:
// parallel vectors, no well rows, and a text that, written and read once more, writes the
// same text again.
#include <DepthLineField.h>

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <cstdlib>

using rkBase::DepthLineField;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), int(size));
    DepthLineField field(QStringLiteral("fuzz"));
    field.readFromText(text);

    const std::size_t n = field.lineDepths().size();
    if (field.linesX().size() != n || field.lineNames().size() != n || field.lineColors().size() != n
        || field.lineTypes().size() != n || field.selected().size() != n || field.lineOrientations().size() != n
        || field.originalRowPos().size() != n || field.originalDepthChanged().size() != n)
        std::abort();
    // Numbers that do not parse read as 0 and type numbers stay as written, so a line is kept
    // whatever its fields hold; only the well row is fixed.
    for (std::size_t i = 0; i < n; ++i)
        if (field.originalRowPos()[i] != -1)
            std::abort();
    if (n > 0 && !field.modified())
        std::abort();

    const QString once = field.writeToText();
    DepthLineField again(QStringLiteral("fuzz"));
    again.readFromText(once);
    if (again.lineDepths().size() != n)
        std::abort();
    if (again.writeToText() != once)
        std::abort();
    return 0;
}
