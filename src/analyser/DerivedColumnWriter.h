#pragma once
// Gets or makes the groups and columns that one derived-attribute call writes, and records all it
// is about to change as one compound undo action on the root: a group or column made here is taken
// out again on undo, and a node that already existed gets its cells and settings back.
//
// Names never capture a node of someone else: a name held elsewhere in the tree (a user's column
// in another group, a column named like a group) moves the result to the first free name with a
// suffix "_1", "_2", ..., and a later call finds that same column again.

#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace rkBase {

class MatrixData;
class MatrixDataRestore;
class MatrixDataRestoreProxy;

class DerivedColumnWriter
{
public:
    // makeColumn builds a detached column of that name, type name ("Real", "String", ...) and
    // row count.
    using ColumnFactory = std::function<MatrixData*(const QString& name, const QString& typeName, int rows)>;

    DerivedColumnWriter(MatrixData* root, const QString& actionName, ColumnFactory makeColumn);
    ~DerivedColumnWriter();
    DerivedColumnWriter(const DerivedColumnWriter&) = delete;
    DerivedColumnWriter& operator=(const DerivedColumnWriter&) = delete;

    // A sheet's own columns (a field sheet's "dip" beside a well's "dip") keep their names: with
    // this off, names are looked up in their group alone.
    void setNamesUniqueInTree(bool on) { m_uniqueInTree = on; }
    // The group of that name directly under the root, made (rows -1, columns -1, String) when
    // missing.
    MatrixData* group(const QString& name);
    // The column of that name in group, made with `rows` rows of typeName when missing; made
    // tells which.
    MatrixData* column(MatrixData* group, const QString& name, int rows, bool* made = nullptr,
                       const QString& typeName = QStringLiteral("Real"));
    // Call before changing a node that this call did not make: its cells and settings come back
    // on undo. A node kept twice, or one made here, is not recorded again.
    void keep(MatrixData* node);
    // Joins an action that the caller built (rows inserted across the tree) to this call's
    // record; takes ownership. Actions are undone in the reverse order of their joining.
    void record(MatrixDataRestore* restore);
    // Hands the record to the root's undo list; false when nothing was recorded.
    bool commit();

private:
    bool madeHere(const MatrixData* node) const;
    // The first of name, name_1, name_2, ... that is either free in the whole tree or a node
    // under parent that reuse accepts.
    QString freeName(const MatrixData* parent, const QString& name, bool wantGroup, MatrixData** existing) const;
    void attach(MatrixData* parent, MatrixData* node, bool isGroup);

    MatrixData* m_root;
    QString m_actionName;
    ColumnFactory m_makeColumn;
    std::unique_ptr<MatrixDataRestoreProxy> m_record;
    std::vector<const MatrixData*> m_made;
    std::vector<const MatrixData*> m_kept;
    bool m_uniqueInTree = true;
};

} // namespace rkBase
