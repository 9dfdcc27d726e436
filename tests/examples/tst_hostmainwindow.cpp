// The demo host as a user drives it: open files good and bad, edit, undo and redo.
#include <HostMainWindow.h>
#include <MatrixData.h>
#include <QDataAnalyserDialog.h>
#include <QVertexItemModel.h>

#include <QtTest>

#include <QAction>
#include <QMenuBar>
#include <QTemporaryDir>

using rkBase::MatrixData;

class TestHostMainWindow : public QObject
{
    Q_OBJECT
private slots:
    void openAndUndo();
    void badFiles_data();
    void badFiles();
};

namespace {
QAction* action(QMainWindow& w, const QString& prefix)
{
    for (QAction* menu : w.menuBar()->actions())
        for (QAction* a : menu->menu()->actions())
            if (a->text().remove(QLatin1Char('&')).startsWith(prefix))
                return a;
    return nullptr;
}
} // namespace

void TestHostMainWindow::openAndUndo()
{
    HostMainWindow w;
    QVERIFY(w.openCsv(QStringLiteral(RK_SAMPLE_CSV), true));
    rkBase::QVertexItemModel* model = w.analyser()->vertexItemModel();
    QCOMPARE(model->rowCount(), 3000);
    QVERIFY(w.analyser()->dataRoot()->hasOrientationData());
    QAction* undo = action(w, QStringLiteral("Undo"));
    QAction* redo = action(w, QStringLiteral("Redo"));
    QVERIFY(undo && redo);
    QVERIFY(!undo->isEnabled());
    model->enableUndoRedo(true);
    const QModelIndex name = model->index(0, 5);
    QVERIFY(model->setData(name, QStringLiteral("Renamed")));
    QVERIFY(undo->isEnabled());
    QVERIFY(undo->text().contains(QStringLiteral("Edit Cell")));
    undo->trigger();
    QCOMPARE(model->data(model->index(0, 5)).toString(), QStringLiteral("Bedding 1"));
    QVERIFY(redo->isEnabled());
    redo->trigger();
    QCOMPARE(model->data(model->index(0, 5)).toString(), QStringLiteral("Renamed"));
    // A second file becomes a second sheet with a name of its own.
    QVERIFY(w.openCsv(QStringLiteral(RK_SAMPLE_CSV), true));
    QCOMPARE(w.analyser()->dataRoot()->childCount(), 2);
    QCOMPARE(w.analyser()->dataRoot()->child(1)->name(), QStringLiteral("sample_well_1"));
}

void TestHostMainWindow::badFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("loads");
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("binary garbage") << QByteArray("\x00\x01\xff\xfe,\x80\x81\n\x02", 10) << true;
    QTest::newRow("ragged with quotes") << QByteArray("a,b\n1,\"x\n2,3,4\n") << true;
}

void TestHostMainWindow::badFiles()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, loads);
    QTemporaryDir dir;
    QFile f(dir.filePath(QStringLiteral("bad.csv")));
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(bytes);
    f.close();
    HostMainWindow w;
    QCOMPARE(w.openCsv(f.fileName(), true), loads);
    QCOMPARE(w.analyser()->dataRoot()->childCount(), loads ? 1 : 0);
}

QTEST_MAIN(TestHostMainWindow)
#include "tst_hostmainwindow.moc"
