// The icon resources on their own: linking the object library, with nothing else of the analyser,
// must be enough to find every icon the analyser names.
#include <QtTest>

#include <QIcon>
#include <QImage>
#include <QPixmap>

class TestResources : public QObject
{
    Q_OBJECT
private slots:
    void icon_data();
    void icon();
    void unknownNameIsNull();
};

void TestResources::icon_data()
{
    QTest::addColumn<QString>("path");
    const char* names[] = {"table",         "chart_bar", "histogram",  "cross_plot", "rose_plot",
                           "stereo_plot",   "tangent_plot", "well_log_plot", "cursors", "page_copy",
                           "page_paste",    "find",      "arrow_switch", "color_swatch", "table_edit"};
    for (const char* name : names)
        QTest::newRow(name) << QStringLiteral(":/rkBaseQt/Resources/%1.png").arg(QLatin1String(name));
}

void TestResources::icon()
{
    QFETCH(QString, path);
    const QImage image(path);
    QVERIFY2(!image.isNull(), qPrintable(path));
    QCOMPARE(image.size(), QSize(16, 16));
    QVERIFY(image.hasAlphaChannel());

    // A blank or nearly blank image means a broken drawing or a wrong file behind the alias.
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    int opaque = 0;
    int transparent = 0;
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x) {
            const int a = qAlpha(argb.pixel(x, y));
            opaque += a > 0;
            transparent += a == 0;
        }
    QVERIFY2(opaque > 20, qPrintable(QStringLiteral("%1 opaque pixels").arg(opaque)));
    QVERIFY2(transparent > 0, "an icon that fills its whole square has lost its alpha");

    const QIcon icon(path);
    QVERIFY(!icon.isNull());
    QCOMPARE(icon.pixmap(16, 16).size(), QSize(16, 16));
    QVERIFY(!QPixmap(path).isNull());
}

void TestResources::unknownNameIsNull()
{
    QVERIFY(QImage(QStringLiteral(":/rkBaseQt/Resources/no_such_icon.png")).isNull());
}

QTEST_MAIN(TestResources)
#include "tst_resources.moc"
