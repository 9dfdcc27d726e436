// The demo's command-line job until the window host takes over: load a CSV sheet into the data
// tree and print what the analyser would start from: the sheet's shape, a summary of every
// numeric column, the classes of the lithology column, and the mean bedding orientation.
#include "CsvSheetReader.h"

#include <MatrixData.h>

#include <QCoreApplication>
#include <QTextStream>

#include <cmath>
#include <memory>

using rkBase::MatrixData;

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() < 2) {
        QTextStream(stderr) << "usage: rk_sheet_summary FILE.csv\n";
        return 2;
    }
    CsvSheetReader reader;
    MatrixData root(QStringLiteral("root"), -1, -1, QVariant::String, true);
    MatrixData* sheet = reader.read(args[1], QStringLiteral("Well"));
    QTextStream out(stdout);
    for (const QString& p : reader.problems())
        out << "note: " << p << "\n";
    if (!sheet)
        return 1;
    root.appendChild(sheet, true);
    root.checkValidRowCount();
    const int created = root.createMeasuredDepth();

    out << "Sheet \"" << sheet->name() << "\": " << root.maxNumbOfSelectedRows(1, 0) << " rows, "
        << root.numberOfSelectedItems() << " columns" << (created ? " (measured depth computed from X/Y/Z)" : "")
        << ", orientation data: " << (root.hasOrientationData() ? "yes" : "no") << "\n\n";
    out << QStringLiteral("%1 %2 %3 %4 %5 %6\n")
               .arg(QStringLiteral("column"), -22)
               .arg(QStringLiteral("type"), -9)
               .arg(QStringLiteral("minimum"), 12)
               .arg(QStringLiteral("maximum"), 12)
               .arg(QStringLiteral("mean"), 12)
               .arg(QStringLiteral("std dev"), 12);
    for (MatrixData* c : root.leafs()) {
        out << QStringLiteral("%1 %2").arg(c->name(), -22).arg(MatrixData::systemTypeName(c->cellType()), -9);
        double mn, mx, mean;
        int count;
        if (c->getMinMaxForColumn(0, mn, mx, mean, count, boost::dynamic_bitset<>()))
            out << QStringLiteral(" %1 %2 %3 %4").arg(mn, 12, 'f', 3).arg(mx, 12, 'f', 3).arg(mean, 12, 'f', 3)
                       .arg(c->standardDeviation(), 12, 'f', 3);
        else {
            QMap<int, QString> names;
            QMap<int, QColor> colours;
            c->createSymbolIDs(names, colours);
            out << "  " << names.size() << " distinct value(s)";
        }
        out << "\n";
    }

    // Mean bedding orientation: principal axis of the poles (largest eigenvector of the
    // orientation matrix), found by power iteration.
    MatrixData* dip = root.getNodeFromName(QStringLiteral("dip"));
    MatrixData* azimuth = root.getNodeFromName(QStringLiteral("azimuth"));
    MatrixData* type = root.getNodeFromName(QStringLiteral("Type"));
    if (dip && azimuth) {
        double t[3][3] = {};
        int n = 0;
        const double rad = M_PI / 180.0;
        for (int r = 0; r < dip->validValueRowCount(); ++r) {
            if (!dip->isValueValid(r, 0) || !azimuth->isValueValid(r, 0))
                continue;
            if (type && type->value(r, 0).toString() != QLatin1String("Bedding"))
                continue;
            const double d = dip->toDouble(r, 0) * rad, a = azimuth->toDouble(r, 0) * rad;
            const double p[3] = {-std::sin(d) * std::cos(a), -std::sin(d) * std::sin(a), std::cos(d)}; // pole, down
            for (int i = 0; i < 3; ++i)
                for (int j = 0; j < 3; ++j)
                    t[i][j] += p[i] * p[j];
            ++n;
        }
        double e[3] = {0, 0, 1};
        for (int it = 0; it < 200; ++it) {
            double next[3] = {};
            for (int i = 0; i < 3; ++i)
                for (int j = 0; j < 3; ++j)
                    next[i] += t[i][j] * e[j];
            const double l = std::sqrt(next[0] * next[0] + next[1] * next[1] + next[2] * next[2]);
            if (l == 0)
                break;
            for (int i = 0; i < 3; ++i)
                e[i] = next[i] / l;
        }
        if (e[2] < 0)
            for (double& v : e)
                v = -v;
        const double plunge = std::asin(std::min(1.0, e[2])) / rad;
        const double trend = std::fmod(std::atan2(e[1], e[0]) / rad + 360.0, 360.0);
        out << "\nBedding poles: " << n << ", principal pole plunge " << QString::number(plunge, 'f', 1)
            << " toward " << QString::number(trend, 'f', 1) << " (mean plane dip "
            << QString::number(90.0 - plunge, 'f', 1) << " toward " << QString::number(std::fmod(trend + 180.0, 360.0), 'f', 1)
            << ")\n";
    }
    return 0;
}
