// Feeds arbitrary bytes to what the sheet takes in from outside: pasted text, the fill drag's
// stream and the attribute drag's stream. Each must either apply or refuse, never crash, and an
// attribute drop that is refused must leave the tree as it was.
#include <MatrixData.h>
#include <TreeBytes.h>
#include <QTreeItemModel.h>
#include <QVertexItemModel.h>

#include <QApplication>
#include <QByteArray>
#include <QDataStream>
#include <QMimeData>

#include <cstdint>
#include <cstdlib>
#include <memory>

using rkBase::MatrixData;

namespace {
std::unique_ptr<MatrixData> sheet()
{
    auto root = std::make_unique<MatrixData>(QStringLiteral("root"), -1, -1, QVariant::String, true);
    auto* well = new MatrixData(QStringLiteral("Well"), -1, -1, QVariant::String, true);
    root->appendChild(well, true);
    const QVariant::Type types[] = {QVariant::Double, QVariant::Int, QVariant::String, QVariant::Bool, QVariant::Color};
    int c = 0;
    for (QVariant::Type type : types) {
        auto* col = new MatrixData(QStringLiteral("c%1").arg(c++), 4, 1, type, true);
        well->appendChild(col, false);
    }
    well->child(0)->setValue(0, 0, 1.5);
    well->child(2)->setValue(1, 0, QStringLiteral("text"));
    return root;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication app(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const int route = data[0] % 3;
    const QByteArray rest(reinterpret_cast<const char*>(data + 1), static_cast<int>(size - 1));
    std::unique_ptr<MatrixData> root = sheet();
    QMimeData mime;
    if (route == 0) {
        rkBase::QVertexItemModel model(nullptr, root.get(), -1, (data[0] & 4) != 0, nullptr);
        model.enableUndoRedo(true);
        mime.setText(QString::fromUtf8(rest));
        model.setMimeData(mime, 0, data[0] >> 3 & 3, {0, 1, 2, 3});
    } else if (route == 1) {
        rkBase::QVertexItemModel model(nullptr, root.get(), -1, false, nullptr);
        model.enableUndoRedo(true);
        // A drag starts at the top left; the caller owns what mimeData() makes.
        std::unique_ptr<QMimeData> start(model.mimeData({model.index(0, 0), model.index(1, 0)}));
        mime.setData(QStringLiteral("4drook/dragDrop.list"), rest);
        model.dropMimeData(&mime, Qt::CopyAction, 3, 0, model.index(0, 0));
    } else {
        rkBase::QTreeItemModel model(nullptr, root.get());
        mime.setData(QStringLiteral("4drkview/attribute.text.list"), rest);
        const QByteArray before = treeBytes(*root);
        // Dropped on the group: new columns, no question to the user.
        const QModelIndex group = model.index(0, 0, model.index(0, 0));
        if (!model.dropMimeData(&mime, Qt::CopyAction, 0, 0, group.isValid() ? group : model.index(0, 0))
            && treeBytes(*root) != before)
            std::abort();
    }
    return 0;
}
