// The stress-overlay renderer on a real GL context (Mesa): colours land in the right cells, in
// OpenGL row order and QImage channel order, and bad grids leave the cleared buffer.
#include <MatrixDataArray.h>
#include <OpenGLDebugScene.h>
#include <OpenGLScene.h>
#include <PinGLDriver.h>

#include <QtTest>

#include <cmath>
#include <limits>
#include <memory>

using rkBase::MatrixDataArray;

namespace {
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
const QColor kClear(10, 20, 30);

// 4 x 4 grid with one value per 2 x 2 quadrant: rows are x, columns y.
std::unique_ptr<MatrixDataArray> quadrantGrid(double bottomLeft, double bottomRight, double topLeft, double topRight)
{
    auto grid = std::make_unique<MatrixDataArray>(QStringLiteral("grid"), 4, 4, QVariant::Double);
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            grid->setValue(i, j, QVariant(i < 2 ? (j < 2 ? bottomLeft : topLeft) : (j < 2 ? bottomRight : topRight)));
    return grid;
}

bool near(const QColor& a, const QColor& b, int tolerance = 6)
{
    return std::abs(a.red() - b.red()) <= tolerance && std::abs(a.green() - b.green()) <= tolerance
           && std::abs(a.blue() - b.blue()) <= tolerance;
}

QString describe(const QColor& c)
{
    return QStringLiteral("(%1, %2, %3)").arg(c.red()).arg(c.green()).arg(c.blue());
}

#define VERIFY_PIXEL(image, x, y, expected)                                                                      \
    do {                                                                                                         \
        const QColor actual_ = (image).pixelColor((x), (y));                                                     \
        QVERIFY2(near(actual_, (expected)), qPrintable(QStringLiteral("pixel (%1, %2) is %3, expected %4")       \
                                                           .arg(x).arg(y).arg(describe(actual_), describe(expected)))); \
    } while (0)

bool allPixels(const QImage& image, const QColor& colour)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != colour.rgb())
                return false;
    return true;
}
} // namespace

class TestOpenGLScene : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cellColours_data();
    void cellColours();
    void badGridsLeaveClearedBuffer_data();
    void badGridsLeaveClearedBuffer();
    void nonFiniteValuesLeaveHoles();
    void columnsFollowSquareCells_data();
    void columnsFollowSquareCells();
    void resizeRebuildsFrameBufferOnNextPaint();
    void testMeshCorners();
    void debugSceneDrawsToItsWindow();

private:
    std::unique_ptr<OpenGLScene> m_scene;
};

void TestOpenGLScene::initTestCase()
{
    m_scene = std::make_unique<OpenGLScene>(QGLFormat::defaultFormat(), nullptr);
    QVERIFY2(m_scene->isValid(), "this test needs an OpenGL context (X server with GLX)");
    pinGLDriverLibraries();
    QVERIFY(!m_scene->isVisible());
    m_scene->setClearColor(kClear);
}

void TestOpenGLScene::cellColours_data()
{
    QTest::addColumn<bool>("texture");
    QTest::addColumn<bool>("flip");
    QTest::addColumn<double>("gridStep");
    QTest::addColumn<QColor>("bottomLeft");  // value 0
    QTest::addColumn<QColor>("bottomRight"); // value 1
    QTest::addColumn<QColor>("topLeft");     // value 0.5
    QTest::addColumn<QColor>("topRight");    // value 0.25
    const QColor blue(0, 0, 255), red(255, 0, 0), green(0, 255, 0), cyan(0, 255, 255), yellow(255, 255, 0);
    QTest::newRow("mesh") << false << false << 0.0 << blue << red << green << cyan;
    QTest::newRow("mesh, flipped") << false << true << 0.0 << red << blue << green << yellow;
    QTest::newRow("mesh, no-step marker") << false << false << 99999.0 << blue << red << green << cyan;
    QTest::newRow("mesh, grid's own step") << false << false << 0.5 << blue << red << red << blue;
    QTest::newRow("texture") << true << false << 0.0 << blue << red << green << cyan;
    QTest::newRow("texture, flipped") << true << true << 0.0 << red << blue << green << yellow;
}

// Cells are 30 x 30 pixels; samples sit at cell centres, far from any triangle edge that
// crosses a colour change.
void TestOpenGLScene::cellColours()
{
    QFETCH(bool, texture);
    QFETCH(bool, flip);
    QFETCH(double, gridStep);
    QFETCH(QColor, bottomLeft);
    QFETCH(QColor, bottomRight);
    QFETCH(QColor, topLeft);
    QFETCH(QColor, topRight);
    auto grid = quadrantGrid(0.0, 1.0, 0.5, 0.25);
    grid->setFlipColorMap(flip);
    grid->setColorMapStepSize(gridStep);
    m_scene->setTextureMode(texture);
    m_scene->resize(QSize(90, 90));
    QVERIFY(m_scene->setMeshData(grid.get(), 0.0, 1.0, QRectF(0, 0, 3, 3)));
    const QImage image = m_scene->renderToImage();
    m_scene->setTextureMode(false);
    QCOMPARE(image.size(), QSize(90, 90));
    QCOMPARE(image.format(), QImage::Format_ARGB32);
    // Rows in OpenGL order: the grid's first columns are the image's first rows.
    VERIFY_PIXEL(image, 15, 15, bottomLeft);
    VERIFY_PIXEL(image, 75, 15, bottomRight);
    VERIFY_PIXEL(image, 15, 75, topLeft);
    VERIFY_PIXEL(image, 75, 75, topRight);
    QCOMPARE(qAlpha(image.pixel(45, 45)), 255);
}

void TestOpenGLScene::badGridsLeaveClearedBuffer_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("columns");
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<bool>("texture");
    const QRectF square(0, 0, 3, 3);
    QTest::newRow("no grid") << 0 << 0 << 0.0 << 1.0 << square << false;
    QTest::newRow("one row") << 1 << 4 << 0.0 << 1.0 << square << false;
    QTest::newRow("one column") << 4 << 1 << 0.0 << 1.0 << square << false;
    QTest::newRow("min equals max") << 4 << 4 << 0.5 << 0.5 << square << false;
    QTest::newRow("nan min") << 4 << 4 << kNaN << 1.0 << square << false;
    QTest::newRow("infinite max") << 4 << 4 << 0.0 << kInf << square << false;
    QTest::newRow("texture, rectangle too flat for two columns") << 4 << 4 << 0.0 << 1.0 << QRectF(0, 0, 3, 0.5)
                                                                 << true;
    QTest::newRow("texture, one row") << 1 << 4 << 0.0 << 1.0 << square << true;
    QTest::newRow("texture, min equals max") << 4 << 4 << 2.0 << 2.0 << square << true;
}

// A rejected grid also drops the mesh before it: a stale overlay must not stay on screen.
void TestOpenGLScene::badGridsLeaveClearedBuffer()
{
    QFETCH(int, rows);
    QFETCH(int, columns);
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(QRectF, rect);
    QFETCH(bool, texture);
    m_scene->setTextureMode(texture);
    m_scene->resize(QSize(32, 24));
    auto good = quadrantGrid(0.0, 1.0, 0.5, 0.25);
    QVERIFY(m_scene->setMeshData(good.get(), 0.0, 1.0, QRectF(0, 0, 3, 3)));
    QVERIFY(!allPixels(m_scene->renderToImage(), kClear));
    std::unique_ptr<MatrixDataArray> grid;
    if (rows > 0)
        grid = std::make_unique<MatrixDataArray>(QStringLiteral("bad"), rows, columns, QVariant::Double);
    QVERIFY(!m_scene->setMeshData(grid.get(), min, max, rect));
    const QImage image = m_scene->renderToImage();
    m_scene->setTextureMode(false);
    QCOMPARE(image.size(), QSize(32, 24));
    QVERIFY(allPixels(image, kClear));
}

void TestOpenGLScene::nonFiniteValuesLeaveHoles()
{
    auto grid = quadrantGrid(0.0, 1.0, 0.5, 0.25);
    grid->setValue(3, 3, QVariant(kNaN));
    grid->setValue(0, 3, QVariant(-kInf));
    m_scene->resize(QSize(90, 90));
    QVERIFY(m_scene->setMeshData(grid.get(), 0.0, 1.0, QRectF(0, 0, 3, 3)));
    const QImage image = m_scene->renderToImage();
    VERIFY_PIXEL(image, 75, 75, kClear); // both triangles of the top right cell touch the NaN
    VERIFY_PIXEL(image, 5, 85, kClear);  // of the top left cell only the one on the corner does
    VERIFY_PIXEL(image, 25, 65, QColor(0, 255, 0));
    VERIFY_PIXEL(image, 15, 15, QColor(0, 0, 255));
    VERIFY_PIXEL(image, 75, 15, QColor(255, 0, 0));
}

void TestOpenGLScene::columnsFollowSquareCells_data()
{
    QTest::addColumn<bool>("texture");
    QTest::addColumn<QColor>("top");
    // Column 2 is blue, columns 3 and 4 red: the top of the image shows which were drawn.
    QTest::newRow("texture: 3 of 5 columns") << true << QColor(0, 0, 255);
    QTest::newRow("mesh: every column") << false << QColor(255, 0, 0);
}

// A rectangle twice as wide as high: the texture takes the columns that fill it with square
// cells, of a 5 x 5 grid (4 cells across) only 3 columns (2 cells), stretched over the image.
// The mesh always spans the whole grid.
void TestOpenGLScene::columnsFollowSquareCells()
{
    QFETCH(bool, texture);
    QFETCH(QColor, top);
    MatrixDataArray grid(QStringLiteral("grid"), 5, 5, QVariant::Double);
    for (int i = 0; i < 5; ++i)
        for (int j = 0; j < 5; ++j)
            grid.setValue(i, j, QVariant(j < 3 ? 0.0 : 1.0));
    m_scene->setTextureMode(texture);
    m_scene->resize(QSize(80, 80));
    QVERIFY(m_scene->setMeshData(&grid, 0.0, 1.0, QRectF(10, 10, 40, 20)));
    const QImage image = m_scene->renderToImage();
    // An empty rectangle takes every column: the top cell row is then red in either mode.
    QVERIFY(m_scene->setMeshData(&grid, 0.0, 1.0, QRectF()));
    const QImage all = m_scene->renderToImage();
    m_scene->setTextureMode(false);
    VERIFY_PIXEL(image, 40, 70, top);
    VERIFY_PIXEL(all, 40, 70, QColor(255, 0, 0));
}

void TestOpenGLScene::resizeRebuildsFrameBufferOnNextPaint()
{
    m_scene->resize(QSize(40, 30));
    QVERIFY(m_scene->resizePending());
    QCOMPARE(m_scene->bufferSize(), QSize(40, 30));
    QCOMPARE(m_scene->renderToImage().size(), QSize(40, 30));
    QVERIFY(!m_scene->resizePending());
    QCOMPARE(m_scene->frameBufferSize(), QSize(40, 30));
    m_scene->resize(QSize(64, 16));
    QCOMPARE(m_scene->frameBufferSize(), QSize(40, 30)); // nothing rebuilt until painted
    QCOMPARE(m_scene->renderToImage().size(), QSize(64, 16));
    QCOMPARE(m_scene->frameBufferSize(), QSize(64, 16));
    m_scene->resize(QSize(0, 0)); // a chart not laid out yet
    QVERIFY(m_scene->renderToImage().isNull());
    m_scene->resize(QSize(20, 20));
    QCOMPARE(m_scene->renderToImage().size(), QSize(20, 20));
}

// Red at the GL origin must come back red at image row 0: checks the channel swap and the row
// order in one picture.
void TestOpenGLScene::testMeshCorners()
{
    m_scene->resize(QSize(64, 64));
    m_scene->prepareVertexBuffersTest();
    const QImage image = m_scene->renderToImage();
    VERIFY_PIXEL(image, 0, 0, QColor(255, 0, 0));
    VERIFY_PIXEL(image, 63, 0, QColor(0, 255, 0));
    VERIFY_PIXEL(image, 63, 63, QColor(0, 0, 255));
    VERIFY_PIXEL(image, 0, 63, QColor(255, 255, 255));
}

void TestOpenGLScene::debugSceneDrawsToItsWindow()
{
    OpenGLDebugScene scene(QGLFormat::defaultFormat());
    scene.setClearColor(kClear);
    scene.resize(QSize(90, 90));
    QCOMPARE(scene.size(), QSize(90, 90));
    scene.show();
    QVERIFY(QTest::qWaitForWindowExposed(&scene));
    auto grid = quadrantGrid(0.0, 1.0, 0.5, 0.25);
    QVERIFY(scene.setMeshData(grid.get(), 0.0, 1.0, QRectF(0, 0, 3, 3)));
    const QImage image = scene.renderToImage();
    QCOMPARE(image.size(), QSize(90, 90));
    // Read from the window: top-down, as on screen.
    VERIFY_PIXEL(image, 15, 74, QColor(0, 0, 255));
    VERIFY_PIXEL(image, 75, 74, QColor(255, 0, 0));
    VERIFY_PIXEL(image, 15, 15, QColor(0, 255, 0));
}

QTEST_MAIN(TestOpenGLScene)
#include "tst_openglscene.moc"
