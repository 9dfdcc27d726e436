// Cells through the clipboard and by drag: the text and HTML copied, paste into a selection, the
// fill handle's drop, attributes dragged in the tree, their undo records, and bad input refused
// with the tree left as it was.
#include <MatrixData.h>
#include <QDataAnalyserDialog.h>
#include <MatrixDataRestore.h>
#include <QSortFilterProxyVertexItemModel.h>
#include <QTreeItemModel.h>
#include <QVertexItemModel.h>
#include <QVertexModelTableView.h>
#include <TreeBytes.h>
#include <UnitRegistry.h>
#include <DisplayUnitManager.h>

#include <QtTest>

#include <QAction>
#include <QClipboard>
#include <QDataStream>
#include <QDropEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>

#include <cmath>
#include <limits>
#include <memory>

using namespace rkBase;

namespace {
// depth (Double, elevation), count (Int), label (String), lith (KeySequence), tick (Bool).
struct Sheet {
    UnitRegistry registry;
    MatrixData root{QStringLiteral("root"), -1, -1, QVariant::String, true};
    MatrixData* group = nullptr;
    MatrixData* depth = nullptr;
    MatrixData* count = nullptr;
    MatrixData* label = nullptr;
    MatrixData* lith = nullptr;
    MatrixData* tick = nullptr;
    std::unique_ptr<QVertexItemModel> model;
    QSortFilterProxyVertexItemModel proxy;
    QVertexModelTableView view{nullptr, nullptr, false, false, false};

    explicit Sheet(int rows = 3, bool fieldData = false)
    {
        root.setRegistry(&registry);
        group = new MatrixData(QStringLiteral("g"), -1, -1, QVariant::String, true);
        root.appendChild(group, true);
        auto add = [&](const QString& n, QVariant::Type t) {
            auto* c = new MatrixData(n, rows, 1, t, true);
            group->appendChild(c, false);
            return c;
        };
        depth = add(QStringLiteral("depth"), QVariant::Double);
        depth->setUnitManager(UnitRegistry::CATEGORY_ELEVATION);
        count = add(QStringLiteral("count"), QVariant::Int);
        label = add(QStringLiteral("label"), QVariant::String);
        lith = add(QStringLiteral("lith"), QVariant::KeySequence);
        lith->addLookupValue(1, QStringLiteral("Sand"));
        lith->addLookupValue(2, QStringLiteral("Shale"));
        tick = add(QStringLiteral("tick"), QVariant::Bool);
        for (int r = 0; r < rows; ++r) {
            depth->setValue(r, 0, double(r + 1));
            count->setValue(r, 0, 10 + r);
            label->setValue(r, 0, QString(QChar('a' + r)));
            lith->setValue(r, 0, 1 + r % 2);
            tick->setValue(r, 0, r == 0);
        }
        model = std::make_unique<QVertexItemModel>(nullptr, &root, -1, fieldData, nullptr);
        proxy.setSourceModel(model.get());
        view.setModel(&proxy);
    }
    void select(int r0, int c0, int r1, int c1)
    {
        view.selectionModel()->select(QItemSelection(proxy.index(r0, c0), proxy.index(r1, c1)),
                                      QItemSelectionModel::ClearAndSelect);
    }
    // Columns depth, count, label; a blank cell shows as "_".
    QString dump() const
    {
        QStringList lines;
        for (int r = 0; r < depth->validValueRowCount(); ++r) {
            QStringList cells;
            for (const MatrixData* c : {depth, count, label})
                cells << (c->isValueValid(r, 0) ? c->value(r, 0).toString() : QStringLiteral("_"));
            lines << cells.join(QLatin1Char('\t'));
        }
        return lines.join(QLatin1Char('\n'));
    }
};

// Every column's type, row counts and cells: what an undo must bring back. The whole tree's bytes
// would also hold the minimum and maximum that a paste recomputes and an undo leaves alone.
QByteArray cellBytes(const MatrixData& root)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    for (const MatrixData* c : root.leafs()) {
        out << c->name() << c->interfaceName() << int(c->cellType()) << c->rowCount() << c->validValueRowCount();
        for (int r = 0; r < c->rowCount(); ++r)
            out << c->value(r, 0);
    }
    return bytes;
}

std::unique_ptr<QMimeData> textData(const QString& text)
{
    auto data = std::make_unique<QMimeData>();
    data->setText(text);
    return data;
}

// Answers the message boxes that open while it lives, in order; counts them.
struct BoxAnswers : QObject {
    QList<QMessageBox::StandardButton> answers;
    int asked = 0;
    explicit BoxAnswers(QList<QMessageBox::StandardButton> a) : answers(std::move(a)) { startTimer(5); }
    void timerEvent(QTimerEvent*) override
    {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || asked >= answers.size())
            return;
        box->button(answers.at(asked++))->click();
    }
};
} // namespace

class TestClipboard : public QObject
{
    Q_OBJECT
private slots:
    void copyText_data();
    void copyText();
    void paste_data();
    void paste();
    void pasteUndo_data();
    void pasteUndo();
    void roundTripThroughClipboard_data();
    void roundTripThroughClipboard();
    void fillDrag_data();
    void fillDrag();
    void badCellDrops_data();
    void badCellDrops();
    void treeDrop_data();
    void treeDrop();
    void badTreeDrops_data();
    void badTreeDrops();
    void dialogCopyAndPaste();
    void fillHandleEndToEnd();
};

void TestClipboard::copyText_data()
{
    QTest::addColumn<bool>("fieldData");
    QTest::addColumn<bool>("feet");
    QTest::addColumn<QRect>("cells"); // x column, y row, in the view
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("html");
    QTest::addColumn<bool>("sorted"); // view sorted by count, descending
    QTest::newRow("one cell, no newline after it") << false << false << QRect(1, 0, 1, 1) << "10"
                                                   << "<table><tr><td><b>count</b><tr><td>10</table>" << false;
    QTest::newRow("block with a blank") << false << false << QRect(0, 1, 2, 2) << "2\t11\n \t12"
                                        << "<table><tr><td><b>depth</b><td><b>count</b><tr><td>2<td>11<tr><td> <td>12</table>" << false;
    QTest::newRow("display units at 15 digits") << false << true << QRect(0, 0, 1, 1) << "3282.48031496063"
                                                << "<table><tr><td><b>depth</b><tr><td>3282.48031496063</table>" << false;
    QTest::newRow("field data at 6 digits") << true << true << QRect(0, 0, 1, 1) << "1000.5"
                                            << "<table><tr><td><b>depth</b><tr><td>1000.5</table>" << false;
    QTest::newRow("text and codes as stored") << false << false << QRect(2, 0, 2, 2) << "a\t1\nb\t2"
                                              << "<table><tr><td><b>label</b><td><b>lith</b><tr><td>a<td>1<tr><td>b<td>2</table>" << false;
    QTest::newRow("a sorted view copies what it shows") << false << false << QRect(1, 0, 2, 2) << "12\tc\n11\tb"
                                                        << "<table><tr><td><b>count</b><td><b>label</b><tr><td>12<td>c<tr><td>11<td>b</table>"
                                                        << true;
}

void TestClipboard::copyText()
{
    QFETCH(bool, fieldData);
    QFETCH(bool, feet);
    QFETCH(QRect, cells);
    QFETCH(QString, text);
    QFETCH(QString, html);
    QFETCH(bool, sorted);
    Sheet s(3, fieldData);
    if (sorted)
        s.proxy.sort(1, Qt::DescendingOrder);
    s.depth->setValue(0, 0, 1000.5);
    s.depth->setValue(2, 0, QVariant());
    if (feet)
        s.registry.displayUnitManager()->setDisplayUnit(UnitRegistry::CATEGORY_ELEVATION, 1);
    s.select(cells.top(), cells.left(), cells.bottom(), cells.right());
    std::unique_ptr<QMimeData> data(s.view.getSelectedData());
    QVERIFY(data);
    QCOMPARE(data->text(), text);
    QCOMPARE(data->html(), html);
}

void TestClipboard::paste_data()
{
    QTest::addColumn<QRect>("selection");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("fieldData");
    QTest::addColumn<bool>("extend");
    QTest::addColumn<bool>("result");
    QTest::addColumn<QString>("sheet");
    const QRect none;
    QTest::newRow("no selection starts top left") << none << "7" << false << false << false << "7\t10\ta\n2\t11\tb\n3\t12\tc";
    QTest::newRow("into a selection, from its top left") << QRect(1, 1, 2, 2) << "20\tx\n21\ty" << false << false << false
                                                         << "1\t10\ta\n2\t20\tx\n3\t21\ty";
    QTest::newRow("CRLF as LF") << QRect(0, 0, 1, 1) << "5\t6\r\n8\t9" << false << false << false
                                << "5\t6\ta\n8\t9\tb\n3\t12\tc";
    QTest::newRow("a space blanks") << QRect(1, 0, 1, 1) << " \tz" << false << false << false
                                    << "1\t_\tz\n2\t11\tb\n3\t12\tc";
    QTest::newRow("ragged rows, extra columns dropped") << QRect(1, 1, 1, 1) << "20\tx\tA\tB\tC\tD\n21" << false << false
                                                        << false << "1\t10\ta\n2\t20\tx\n3\t21\tc";
    QTest::newRow("text into a number cell keeps it") << QRect(0, 0, 1, 1) << "abc\t5" << false << false << false
                                                      << "1\t5\ta\n2\t11\tb\n3\t12\tc";
    QTest::newRow("an empty line does not advance") << QRect(0, 0, 1, 1) << "4\n\n6" << false << false << false
                                                    << "4\t10\ta\n6\t11\tb\n3\t12\tc";
    QTest::newRow("lines past the sheet are dropped") << QRect(0, 2, 1, 1) << "7\n8\n9" << false << false << false
                                                      << "1\t10\ta\n2\t11\tb\n7\t12\tc";
    QTest::newRow("field data stops at the valid rows") << QRect(0, 2, 1, 1) << "7\n8" << true << false << false
                                                        << "1\t10\ta\n2\t11\tb\n7\t12\tc";
    QTest::newRow("field data extends the rows") << QRect(0, 2, 1, 1) << "7\n8\n9" << true << true << true
                                                 << "1\t10\ta\n2\t11\tb\n7\t12\tc\n8\t_\t_\n9\t_\t_";
    QTest::newRow("field data turns a number column to text") << QRect(0, 0, 1, 1) << "x1" << true << false << false
                                                              << "x1\t10\ta\n2\t11\tb\n3\t12\tc";
    QTest::newRow("empty clipboard") << QRect(0, 0, 1, 1) << "" << false << false << false
                                     << "1\t10\ta\n2\t11\tb\n3\t12\tc";
}

void TestClipboard::paste()
{
    QFETCH(QRect, selection);
    QFETCH(QString, text);
    QFETCH(bool, fieldData);
    QFETCH(bool, extend);
    QFETCH(bool, result);
    QFETCH(QString, sheet);
    Sheet s(3, fieldData);
    s.model->setRowsCanBeExtended(extend);
    if (selection.isValid())
        s.select(selection.top(), selection.left(), selection.bottom(), selection.right());
    QCOMPARE(s.view.setMimeData(*textData(text)), result);
    QCOMPARE(s.dump(), sheet);
    if (result)
        QCOMPARE(s.view.model()->rowCount(), s.depth->validValueRowCount());
}

void TestClipboard::pasteUndo_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("extend");
    QTest::addColumn<bool>("editable");
    QTest::addColumn<QString>("action"); // empty: no record
    QTest::addColumn<QString>("sheet");
    QTest::newRow("a block is one compound action") << "5\t6\n7\t8" << false << true << "Paste: rows=1-2, columns=1-2"
                                                    << "5\t6\ta\n7\t8\tb\n3\t12\tc";
    QTest::newRow("one column pushes its record alone") << "5\n7" << false << true << "Paste: rows=1-1, column=depth"
                                                        << "5\t10\ta\n7\t11\tb\n3\t12\tc";
    QTest::newRow("rows added are undone in the one record") << "5\n6\n7\n8" << true << true
                                                             << "Paste: rows=1-3, column=depth"
                                                             << "5\t10\ta\n6\t11\tb\n7\t12\tc\n8\t_\t_";
    QTest::newRow("a block adding rows") << "5\t6\n7\t8\n9\t1\n3\t4" << true << true << "Paste: rows=1-4, columns=1-2"
                                         << "5\t6\ta\n7\t8\tb\n9\t1\tc\n3\t4\t_";
    QTest::newRow("a refused cell drops the record") << "5\t6" << false << false << QString() << "5\t10\ta\n2\t11\tb\n3\t12\tc";
}

void TestClipboard::pasteUndo()
{
    QFETCH(QString, text);
    QFETCH(bool, extend);
    QFETCH(bool, editable);
    QFETCH(QString, action);
    QFETCH(QString, sheet);
    Sheet s(3, extend);
    s.model->enableUndoRedo(true);
    s.model->setRowsCanBeExtended(extend);
    s.count->setNodeEditable(editable);
    const QByteArray before = cellBytes(s.root);
    s.model->setMimeData(*textData(text), 0, 0, {0, 1, 2});
    QCOMPARE(s.dump(), sheet);
    if (action.isEmpty()) {
        QCOMPARE(s.root.sizeUndoActions(), 0);
        return;
    }
    QCOMPARE(s.root.sizeUndoActions(), 1);
    QCOMPARE(s.root.undoAction(0)->name(), action);
    const QByteArray after = cellBytes(s.root);
    QVERIFY(s.root.undoLastAction());
    QCOMPARE(cellBytes(s.root), before);
    QVERIFY(s.root.redoNextAction());
    QCOMPARE(cellBytes(s.root), after);
}

void TestClipboard::roundTripThroughClipboard_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("feet");
    QTest::newRow("15 digits") << 1234.56789012345 << false;
    QTest::newRow("tiny") << -2.5e-7 << false;
    QTest::newRow("huge") << 1e300 << false;
    QTest::newRow("blank") << std::numeric_limits<double>::quiet_NaN() << false; // stands for a blank cell
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << false;
    QTest::newRow("through feet") << 1000.5 << true;
}

void TestClipboard::roundTripThroughClipboard()
{
    QFETCH(double, value);
    QFETCH(bool, feet);
    Sheet s;
    const bool blank = std::isnan(value);
    s.depth->setValue(1, 0, blank ? QVariant() : QVariant(value));
    if (feet)
        s.registry.displayUnitManager()->setDisplayUnit(UnitRegistry::CATEGORY_ELEVATION, 1);
    const QByteArray before = cellBytes(s.root);
    s.select(0, 0, 2, 2);
    QApplication::clipboard()->setMimeData(s.view.getSelectedData());
    // Wipe the block, then paste it back from the system clipboard.
    for (MatrixData* c : {s.depth, s.count, s.label})
        for (int r = 0; r < 3; ++r)
            c->setValue(r, 0, QVariant());
    const QMimeData* pasted = QApplication::clipboard()->mimeData();
    QVERIFY(pasted && pasted->hasText());
    s.view.setMimeData(*pasted);
    if (!feet) {
        QCOMPARE(cellBytes(s.root), before);
        return;
    }
    // A unit conversion each way may move the last bit.
    QVERIFY(std::abs(s.depth->toDouble(1, 0) - value) <= 1e-12 * std::abs(value));
}

void TestClipboard::fillDrag_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("exclusive");
    QTest::addColumn<QString>("view"); // "sorted": by count, descending; "filtered": stored row 2 hidden
    QTest::addColumn<int>("lastRow");  // view row the drag ends on; it starts on view row 1
    QTest::addColumn<QVariantList>("expected"); // stored rows 0..4
    QTest::addColumn<QString>("action");
    QTest::newRow("a number repeats down") << 0 << false << QString() << 4 << QVariantList{1.0, 2.0, 2.0, 2.0, 2.0}
                                           << "Drag/Drop: rows=2-5, column=depth";
    QTest::newRow("a code stays a code") << 3 << false << QString() << 4 << QVariantList{1, 2, 2, 2, 2}
                                         << "Drag/Drop: rows=2-5, column=lith";
    QTest::newRow("an exclusive tick column is left alone") << 4 << true << QString() << 4
                                                            << QVariantList{true, false, false, false, false} << QString();
    // View rows 1..4 are stored rows 3, 2, 1, 0.
    QTest::newRow("descending sort fills the rows shown") << 0 << false << "sorted" << 4
                                                          << QVariantList{4.0, 4.0, 4.0, 4.0, 5.0}
                                                          << "Drag/Drop: rows=2-5, column=depth";
    // View rows 1..3 are stored rows 1, 3, 4; stored row 2 is hidden and keeps its value.
    QTest::newRow("a hidden row keeps its value") << 0 << false << "filtered" << 3 << QVariantList{1.0, 2.0, 3.0, 2.0, 2.0}
                                                  << "Drag/Drop: rows=2-4, column=depth";
}

void TestClipboard::fillDrag()
{
    QFETCH(int, column);
    QFETCH(bool, exclusive);
    QFETCH(QString, view);
    QFETCH(int, lastRow);
    QFETCH(QVariantList, expected);
    QFETCH(QString, action);
    Sheet s(5);
    s.model->enableUndoRedo(true);
    s.tick->setCheckStateRoleExclusive(exclusive);
    if (view == QLatin1String("sorted"))
        s.proxy.sort(1, Qt::DescendingOrder);
    else if (view == QLatin1String("filtered"))
        s.proxy.setFilterRows({true, true, false, true, true});
    MatrixData* node = s.model->getNode(column);
    const QByteArray before = cellBytes(s.root);
    // What the fill handle does: drag from row 1, the selection grows to the last row, then the drop.
    s.select(1, column, 1, column);
    std::unique_ptr<QMimeData> data(s.proxy.mimeData({s.proxy.index(1, column)}));
    QVERIFY(data);
    s.view.setCellDragEnabled(true);
    s.select(1, column, lastRow, column);
    const QPoint at = s.view.visualRect(s.proxy.index(lastRow, column)).center();
    QDragEnterEvent enter(at, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(s.view.viewport(), &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(at, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QSignalSpy dropped(s.model.get(), SIGNAL(dropColumnData(int, int, int, int)));
    QApplication::sendEvent(s.view.viewport(), &drop);
    QVERIFY(drop.isAccepted());
    QCOMPARE(dropped.size(), 1);
    QCOMPARE(dropped.first(), (QVariantList{1, lastRow, column, 1}));
    QVERIFY(!s.view.cellDragEnabled());
    QVERIFY(!s.model->dragStartIndex().isValid());
    for (int r = 0; r < expected.size(); ++r) {
        QCOMPARE(node->value(r, 0), expected.at(r));
        QCOMPARE(node->value(r, 0).type(), expected.at(r).type());
    }
    if (action.isEmpty()) {
        QCOMPARE(s.root.sizeUndoActions(), 0);
        return;
    }
    QCOMPARE(s.root.sizeUndoActions(), 1);
    QCOMPARE(s.root.undoAction(0)->name(), action);
    QVERIFY(s.root.undoLastAction());
    QCOMPARE(cellBytes(s.root), before);
}

void TestClipboard::badCellDrops_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("dragStarted");
    QByteArray one;
    QDataStream(&one, QIODevice::WriteOnly) << int(1);
    QByteArray tooMany;
    QDataStream(&tooMany, QIODevice::WriteOnly) << int(99);
    QTest::newRow("unknown format") << "text/plain" << one << true;
    QTest::newRow("truncated count") << "4drook/dragDrop.list" << QByteArray("\0\0", 2) << true;
    QTest::newRow("more columns than the sheet") << "4drook/dragDrop.list" << tooMany << true;
    QTest::newRow("no drag started here") << "4drook/dragDrop.list" << one << false;
}

void TestClipboard::badCellDrops()
{
    QFETCH(QString, format);
    QFETCH(QByteArray, bytes);
    QFETCH(bool, dragStarted);
    Sheet s(5);
    if (dragStarted)
        delete s.model->mimeData({s.model->index(1, 0)});
    const QByteArray before = treeBytes(s.root);
    QMimeData data;
    data.setData(format, bytes);
    QVERIFY(!s.model->dropMimeData(&data, Qt::CopyAction, 4, 0, s.model->index(1, 0)));
    QCOMPARE(treeBytes(s.root), before);
}

void TestClipboard::treeDrop_data()
{
    QTest::addColumn<bool>("onGroup");
    QTest::addColumn<QList<int>>("answers"); // QMessageBox buttons, one per column asked
    QTest::addColumn<QStringList>("names");  // the target group's columns afterwards
    QTest::addColumn<int>("records");
    QTest::newRow("on a group: new columns, unique names") << true << QList<int>{}
                                                           << QStringList{"depth_1", "count_1", "x", "y"} << 2;
    QTest::newRow("on a column: each asked, yes") << false << QList<int>{QMessageBox::Yes, QMessageBox::Yes}
                                                  << QStringList{"x", "y"} << 2;
    QTest::newRow("a declined one passes its data on") << false << QList<int>{QMessageBox::No, QMessageBox::Yes}
                                                       << QStringList{"x", "y"} << 1;
}

void TestClipboard::treeDrop()
{
    QFETCH(bool, onGroup);
    QFETCH(QList<int>, answers);
    QFETCH(QStringList, names);
    QFETCH(int, records);
    Sheet s;
    auto* other = new MatrixData(QStringLiteral("h"), -1, -1, QVariant::String, true);
    s.root.appendChild(other, true);
    for (const char* n : {"x", "y"}) {
        auto* c = new MatrixData(QString::fromLatin1(n), 2, 1, QVariant::Double, true);
        c->setValue(0, 0, 5.0);
        other->appendChild(c, false);
    }
    QTreeItemModel tree(nullptr, &s.root);
    const QByteArray before = treeBytes(s.root);
    std::unique_ptr<QMimeData> data(tree.mimeData({tree.indexFromNode(s.depth), tree.indexFromNode(s.count)}));
    QVERIFY(data);
    QList<QMessageBox::StandardButton> buttons;
    for (int a : answers)
        buttons << QMessageBox::StandardButton(a);
    BoxAnswers boxes(buttons);
    const QModelIndex target = onGroup ? tree.indexFromNode(other) : tree.indexFromNode(other->child(0));
    QVERIFY(tree.dropMimeData(data.get(), Qt::CopyAction, onGroup ? 0 : -1, 0, target));
    QCOMPARE(boxes.asked, answers.size());
    QStringList now;
    for (MatrixData* c : other->children())
        now << c->name();
    QCOMPARE(now, names);
    QCOMPARE(s.root.sizeUndoActions(), records);
    QCOMPARE(tree.modified(), records > 0);
    // The data came along: the first dropped column holds depth's cells.
    MatrixData* first = onGroup ? other->child(0) : (answers.first() == QMessageBox::Yes ? other->child(0) : other->child(1));
    QCOMPARE(first->toDouble(2, 0), 3.0);
    QVERIFY(first->isSelected());
    while (s.root.undoLastAction()) {
    }
    QCOMPARE(treeBytes(s.root), before);
}

void TestClipboard::badTreeDrops_data()
{
    QTest::addColumn<int>("damage"); // 0 chop the end, 1 flip a byte, 2 count lies, 3 nothing at all, 4 no count
    QTest::newRow("truncated") << 0;
    QTest::newRow("a byte flipped") << 1;
    QTest::newRow("count larger than the attributes") << 2;
    QTest::newRow("empty") << 3;
    QTest::newRow("negative count") << 4;
}

void TestClipboard::badTreeDrops()
{
    QFETCH(int, damage);
    Sheet s;
    QTreeItemModel tree(nullptr, &s.root);
    std::unique_ptr<QMimeData> good(tree.mimeData({tree.indexFromNode(s.depth), tree.indexFromNode(s.label)}));
    QByteArray bytes = good->data(QStringLiteral("4drkview/attribute.text.list"));
    switch (damage) {
    case 0: bytes.chop(9); break;
    case 1: bytes[bytes.size() / 2] = char(bytes[bytes.size() / 2] ^ 0x5a); break;
    case 2: bytes[3] = 3; break;
    case 3: bytes.clear(); break;
    default: bytes = QByteArray("\xff\xff\xff\xff", 4);
    }
    QMimeData data;
    data.setData(QStringLiteral("4drkview/attribute.text.list"), bytes);
    const QByteArray before = treeBytes(s.root);
    BoxAnswers boxes({QMessageBox::Yes, QMessageBox::Yes});
    QVERIFY(!tree.dropMimeData(&data, Qt::CopyAction, 0, 0, tree.indexFromNode(s.group)));
    QVERIFY(!tree.dropMimeData(&data, Qt::CopyAction, -1, 0, tree.indexFromNode(s.count)));
    QCOMPARE(boxes.asked, 0);
    QCOMPARE(treeBytes(s.root), before);
    QCOMPARE(s.root.sizeUndoActions(), 0);
}

void TestClipboard::dialogCopyAndPaste()
{
    UnitRegistry registry;
    QDataAnalyserDialog d;
    d.dataRoot()->setRegistry(&registry);
    d.initializeTestData();
    d.initialize(QStringLiteral("test"), nullptr, &registry, Qt::Horizontal, false, true, true, true, true, true, 1,
                 false, false);
    QVertexModelTableView* table = d.vertexTable();
    QAbstractItemModel* m = table->model();
    MatrixData* x = d.vertexItemModel()->getNode(0);
    MatrixData* y = d.vertexItemModel()->getNode(1);
    QVERIFY(x && y);
    x->setValue(1, 0, QVariant()); // a blank goes over as a blank
    table->selectionModel()->select(QItemSelection(m->index(0, 0), m->index(1, 1)), QItemSelectionModel::ClearAndSelect);
    d.copyToClipboard();
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("1\t1\n \t2"));
    QVERIFY(d.pasteAction()->isEnabled());

    table->selectionModel()->select(m->index(5, 0), QItemSelectionModel::ClearAndSelect);
    d.pasteFromClipboard();
    QCOMPARE(x->value(5, 0), QVariant(1.0));
    QCOMPARE(y->value(5, 0), QVariant(1.0));
    QVERIFY(!x->isValueValid(6, 0));
    QCOMPARE(y->value(6, 0), QVariant(2.0));

    // An empty clipboard pastes nothing.
    QApplication::clipboard()->clear();
    table->selectionModel()->select(m->index(0, 0), QItemSelectionModel::ClearAndSelect);
    d.pasteFromClipboard();
    QCOMPARE(x->value(0, 0), QVariant(1.0));
}

void TestClipboard::fillHandleEndToEnd()
{
    Sheet s(6);
    s.view.resize(600, 400);
    s.view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&s.view));
    s.view.setCurrentIndex(s.proxy.index(1, 0));
    s.select(1, 0, 1, 0);
    const QRect start = s.view.visualRect(s.proxy.index(1, 0));
    const QPoint handle = start.bottomRight() - QPoint(2, 2);
    QVERIFY(s.view.isCursorOnDragPoint(s.proxy.index(1, 0), handle));
    const QPoint target = s.view.visualRect(s.proxy.index(4, 0)).center();
    QTimer::singleShot(50, [&] {
        QTest::mouseMove(s.view.viewport(), target);
        QTimer::singleShot(50, [&] { QTest::mouseRelease(s.view.viewport(), Qt::LeftButton, Qt::NoModifier, target); });
    });
    QTest::mousePress(s.view.viewport(), Qt::LeftButton, Qt::NoModifier, handle);
    QTRY_COMPARE(s.depth->value(4, 0), QVariant(2.0));
    QCOMPARE(s.depth->value(3, 0), QVariant(2.0));
    QCOMPARE(s.depth->value(5, 0), QVariant(6.0));
    // The drag grew the selection over the rows filled.
    QCOMPARE(s.view.selectedRowsInColumn(), (std::vector<int>{1, 2, 3, 4}));
}

QTEST_MAIN(TestClipboard)
#include "tst_clipboard.moc"
