// Every icon the analyser names is in the library's resources, 16 by 16 and not blank.
#include <QDataAnalyserDialog.h>

#include <QtTest>

#include <QImage>

class TestResources : public QObject
{
    Q_OBJECT
private slots:
    void icons_data();
    void icons();
};

void TestResources::icons_data()
{
    QTest::addColumn<QString>("path");
    const char* names[] = {"table", "chart_bar", "histogram", "cross_plot", "rose_plot", "stereo_plot", "tangent_plot",
                           "well_log_plot", "cursors", "page_copy", "page_paste", "find", "arrow_switch",
                           "color_swatch", "table_edit"};
    for (const char* name : names)
        for (const char* prefix : {"rkBaseQt", "rkview"})
            QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(QLatin1String(prefix), QLatin1String(name))))
                << QStringLiteral(":/%1/Resources/%2.png").arg(QLatin1String(prefix), QLatin1String(name));
}

void TestResources::icons()
{
    QFETCH(QString, path);
    // Linking the library is what brings the resources; touch it so the linker keeps it.
    rkBase::QDataAnalyserDialog dialog;
    const QImage image(path);
    QVERIFY2(!image.isNull(), qPrintable(path));
    QCOMPARE(image.size(), QSize(16, 16));
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    int opaque = 0;
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
            opaque += qAlpha(argb.pixel(x, y)) > 0;
    QVERIFY(opaque > 20);
}

QTEST_MAIN(TestResources)
#include "tst_resources.moc"
