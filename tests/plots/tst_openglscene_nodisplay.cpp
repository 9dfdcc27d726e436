// The stress-overlay renderer on a host without OpenGL: no context, so every call must return
// quietly and every image is null.
#include <MatrixDataArray.h>
#include <OpenGLDebugScene.h>
#include <OpenGLScene.h>

#include <QtTest>

#include <memory>

using rkBase::MatrixDataArray;

class TestOpenGLSceneNoDisplay : public QObject
{
    Q_OBJECT
private slots:
    void everyCallIsHarmless_data();
    void everyCallIsHarmless();
};

void TestOpenGLSceneNoDisplay::everyCallIsHarmless_data()
{
    QTest::addColumn<bool>("texture");
    QTest::addColumn<bool>("debug");
    QTest::newRow("mesh") << false << false;
    QTest::newRow("texture") << true << false;
    QTest::newRow("debug scene") << false << true;
}

void TestOpenGLSceneNoDisplay::everyCallIsHarmless()
{
    QFETCH(bool, texture);
    QFETCH(bool, debug);
    // As the chart holds it: a top-level scene that is never shown.
    std::unique_ptr<OpenGLScene> scene(debug ? new OpenGLDebugScene(QGLFormat::defaultFormat(), nullptr)
                                             : new OpenGLScene(QGLFormat::defaultFormat(), nullptr));
    QVERIFY(!scene->isValid());
    scene->setTextureMode(texture);
    scene->resize(QSize(120, 80));
    MatrixDataArray grid(QStringLiteral("grid"), 5, 5, QVariant::Double);
    for (int i = 0; i < 5; ++i)
        for (int j = 0; j < 5; ++j)
            grid.setValue(i, j, QVariant(double(i + j)));
    QVERIFY(!scene->setMeshData(&grid, 0.0, 8.0, QRectF(0, 0, 4, 4)));
    QVERIFY(scene->renderToImage().isNull());
    QVERIFY(!scene->setMeshData(nullptr, 0.0, 8.0, QRectF()));
    scene->prepareVertexBuffersTest();
    scene->render();
    scene->updateGL();
    QVERIFY(scene->renderToImage().isNull());
    scene->resize(QSize(0, 0));
    QVERIFY(scene->renderToImage().isNull());
    scene->cleanup();
}

QTEST_MAIN(TestOpenGLSceneNoDisplay)
#include "tst_openglscene_nodisplay.moc"
