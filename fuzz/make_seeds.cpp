// Writes a few valid streams (a column of each cell type, a sheet, a single row) as the seed
// corpus, so the fuzzer starts from inputs that pass the checksum and reach the node reader.
#include <MatrixData.h>

#include <QColor>
#include <QDataStream>
#include <QFile>
#include <QPointF>

using rkBase::MatrixData;

namespace {
// Each seed twice: as a whole stream, and as the bare payload for the harness to wrap.
void save(const QString& dir, const QString& name, const MatrixData& node, int row = -1)
{
    QByteArray bytes;
    {
        QDataStream out(&bytes, QIODevice::WriteOnly);
        if (row >= 0)
            node.putDataOnStream(row, out, true);
        else
            node.putDataOnStream(out, true);
    }
    const char kind = node.isGroup() ? 1 : 0;
    QFile whole(dir + QLatin1Char('/') + name);
    if (whole.open(QIODevice::WriteOnly))
        whole.write(QByteArray(1, kind) + bytes);
    // Skip magic, version and flags (7 bytes) and the payload's length (4); drop the hash (8).
    const QByteArray payload = bytes.mid(11, bytes.size() - 11 - 8);
    const char flags = bytes.at(6);
    QFile wrapped(dir + QLatin1Char('/') + name + QStringLiteral("_payload"));
    if (wrapped.open(QIODevice::WriteOnly))
        wrapped.write(QByteArray(1, char(kind | 2 | (flags << 2))) + payload);
}
} // namespace

int main(int argc, char** argv)
{
    const QString dir = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral(".");
    MatrixData sheet(QStringLiteral("Well"), -1, -1, QVariant::String, true);
    const QVariantList samples{2.5, 7, true, QStringLiteral("Top"), QColor(1, 2, 3), QPointF(1, 2), 3, QStringLiteral("x")};
    const QVariant::Type types[] = {QVariant::Double, QVariant::Int, QVariant::Bool, QVariant::String,
                                    QVariant::Color, QVariant::PointF, QVariant::Icon, QVariant::KeySequence};
    for (int i = 0; i < 8; ++i) {
        auto* c = new MatrixData(MatrixData::systemTypeName(types[i]), 3, 1, types[i], true);
        c->setValue(0, 0, samples[i]);
        c->setValue(2, 0, samples[i]);
        c->addLookupValue(3, QStringLiteral("Sand"));
        sheet.appendChild(c, false);
        save(dir, QStringLiteral("column_%1").arg(i), *c);
    }
    sheet.child(0)->setCheckStateActive(true);
    save(dir, QStringLiteral("sheet"), sheet);
    save(dir, QStringLiteral("row"), sheet, 2);
    return 0;
}
