// The demo's command-line job until the window host takes over: load a CSV sheet into the data
// tree and print what the analyser would start from: the sheet's shape, a summary of every
// numeric column, the classes of the lithology column, and the bedding orientation statistics.
#include "CsvSheetReader.h"

#include <MatrixData.h>
#include <QRelationshipItemModel.h>

#include <QCoreApplication>
#include <QTextStream>

#include <cmath>
#include <memory>
#include <vector>

using rkBase::MatrixData;
using rkBase::QRelationshipItemModel;

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

    // Bedding orientation statistics, as the stereonet computes them: the bedding rows are the
    // selection, so that the statistics use only them.
    MatrixData* dip = root.getNodeFromName(QStringLiteral("dip"));
    MatrixData* azimuth = root.getNodeFromName(QStringLiteral("azimuth"));
    MatrixData* type = root.getNodeFromName(QStringLiteral("Type"));
    if (dip && azimuth) {
        std::vector<int> bedding;
        for (int r = 0; r < dip->validValueRowCount(); ++r)
            if (!type || type->value(r, 0).toString() == QLatin1String("Bedding"))
                bedding.push_back(r);
        QRelationshipItemModel model;
        model.takeNewDataSet(1, QRelationshipItemModel::HighlightSelected, dip, azimuth, bedding);
        model.calculateMeanDirection(true, false, nullptr, -1);
        double length, variance, kappa, e1, e2, e3, normalized, K, C, lnE3E2, lnE2E1, radius;
        bool unimodal = false;
        QString classification;
        model.calculateFisherStatistics(length, variance, kappa, e1, e2, e3, normalized, K, C, lnE3E2, lnE2E1, radius,
                                        unimodal, classification, true, false);
        const QPointF plane = model.meanPrincipalPlane();
        out << "\nBedding planes: " << model.numberOfSelectedPoints() << ", mean plane dip "
            << QString::number(plane.x(), 'f', 1) << " toward " << QString::number(plane.y(), 'f', 1)
            << ", kappa " << QString::number(kappa, 'f', 1) << ", 95% cone "
            << QString::number(radius * 180.0 / M_PI, 'f', 2) << " deg, K " << QString::number(K, 'f', 2)
            << ", C " << QString::number(C, 'f', 2) << "\n"
            << classification.trimmed().replace(QLatin1Char('\n'), QStringLiteral("; ")) << "\n";
    }
    return 0;
}
