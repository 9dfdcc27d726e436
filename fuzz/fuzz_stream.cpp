// Feeds arbitrary bytes to the node reader. A read either succeeds, and then the node streams
// out again and reads back to the same bytes, or fails and leaves the node exactly as it was.
#include <MatrixData.h>

#include <QByteArray>
#include <QDataStream>

#include <cstdint>
#include <cstdlib>

using rkBase::MatrixData;

namespace {
QByteArray bytesOf(const MatrixData& node)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    node.putDataOnStream(out, true);
    return bytes;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray input = QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<int>(size));
    // Both kinds of node: the first input byte picks one, so both code paths are reached.
    const bool group = size > 0 && (data[0] & 1);
    MatrixData node(QStringLiteral("target"), group ? -1 : 3, group ? -1 : 1,
                    group ? QVariant::String : QVariant::Double, true);
    if (!group)
        node.setValue(1, 0, 42.0);
    const QByteArray before = bytesOf(node);
    QDataStream in(input);
    if (!node.getDataFromStream(in)) {
        if (bytesOf(node) != before)
            std::abort();
        return 0;
    }
    const QByteArray written = bytesOf(node);
    MatrixData again(QStringLiteral("again"), group ? -1 : 1, group ? -1 : 1, group ? QVariant::String : QVariant::Double, true);
    QDataStream in2(written);
    if (!again.getDataFromStream(in2) || bytesOf(again) != written)
        std::abort();
    return 0;
}
