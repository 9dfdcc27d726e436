// Feeds arbitrary bytes to the node reader. A read either succeeds, and then the node streams
// out again and reads back to the same bytes, or fails and leaves the node exactly as it was.
#include <MatrixData.h>
#include <TreeBytes.h>

#include <QByteArray>
#include <QDataStream>

#include <cstdint>
#include <cstdlib>

using rkBase::MatrixData;

namespace {
// The same hash the stream layout uses; wrapping raw bytes with it lets the fuzzer reach the
// node reader instead of stopping at the checksum.
quint64 fnv1a(const QByteArray& bytes)
{
    quint64 h = 1469598103934665603ULL;
    for (char c : bytes) {
        h ^= static_cast<unsigned char>(c);
        h *= 1099511628211ULL;
    }
    return h;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    // The first byte picks the kind of node read into, and whether the rest is taken as a whole
    // stream or as a payload that gets a valid header and checksum.
    const bool group = data[0] & 1;
    const bool wrap = data[0] & 2;
    const QByteArray rest = QByteArray::fromRawData(reinterpret_cast<const char*>(data + 1), static_cast<int>(size - 1));
    QByteArray input;
    if (wrap) {
        QDataStream s(&input, QIODevice::WriteOnly);
        s << quint32(0x524B4D44) << quint16(1) << quint8(data[0] >> 2 & 3) << rest << fnv1a(rest);
    } else {
        input = rest;
    }
    MatrixData node(QStringLiteral("target"), group ? -1 : 3, group ? -1 : 1,
                    group ? QVariant::String : QVariant::Double, true);
    if (!group)
        node.setValue(1, 0, 42.0);
    const QByteArray before = treeBytes(node);
    QDataStream in(input);
    if (!node.getDataFromStream(in)) {
        if (treeBytes(node) != before)
            std::abort();
        return 0;
    }
    const QByteArray written = treeBytes(node);
    MatrixData again(QStringLiteral("again"), group ? -1 : 1, group ? -1 : 1, group ? QVariant::String : QVariant::Double, true);
    QDataStream in2(written);
    if (!again.getDataFromStream(in2) || treeBytes(again) != written)
        std::abort();
    return 0;
}
