#include "DerivedColumnWriter.h"

#include <MatrixData.h>
#include <MatrixDataRestore.h>
#include <MatrixDataRestoreProxy.h>

#include <algorithm>

namespace rkBase {

DerivedColumnWriter::DerivedColumnWriter(MatrixData* root, const QString& actionName, ColumnFactory makeColumn)
    : m_root(root), m_actionName(actionName), m_makeColumn(std::move(makeColumn)),
      m_record(std::make_unique<MatrixDataRestoreProxy>(actionName))
{
}

DerivedColumnWriter::~DerivedColumnWriter() = default;

bool DerivedColumnWriter::madeHere(const MatrixData* node) const
{
    for (const MatrixData* n = node; n; n = n->parent())
        if (std::find(m_made.begin(), m_made.end(), n) != m_made.end())
            return true;
    return false;
}

QString DerivedColumnWriter::freeName(const MatrixData* parent, const QString& name, bool wantGroup,
                                      MatrixData** existing) const
{
    *existing = nullptr;
    QString candidate = name;
    for (int i = 1;; ++i) {
        for (MatrixData* child : parent->children()) {
            if (child->name() == candidate && child->isGroup() == wantGroup) {
                *existing = child;
                return candidate;
            }
        }
        if (!m_uniqueInTree || (m_root->name() != candidate && !m_root->getNodeFromName(candidate)))
            return candidate;
        candidate = name + QLatin1Char('_') + QString::number(i);
    }
}

void DerivedColumnWriter::attach(MatrixData* parent, MatrixData* node, bool isGroup)
{
    // The action notes the parent's row counts before the node joins, so undo leaves the
    // remaining columns exactly as long as they were.
    auto* restore = new MatrixDataRestore(parent, m_actionName, true);
    parent->appendChild(node, isGroup);
    restore->recordInsertedAttribute(node);
    m_record->addToList(restore, nullptr);
    m_made.push_back(node);
}

MatrixData* DerivedColumnWriter::group(const QString& name)
{
    if (!m_root)
        return nullptr;
    MatrixData* existing = nullptr;
    const QString free = freeName(m_root, name, true, &existing);
    if (existing)
        return existing;
    auto* node = new MatrixData(free, -1, -1, QVariant::String, true);
    attach(m_root, node, true);
    return node;
}

MatrixData* DerivedColumnWriter::column(MatrixData* group, const QString& name, int rows, bool* made,
                                        const QString& typeName)
{
    if (made)
        *made = false;
    if (!m_root || !group)
        return nullptr;
    MatrixData* existing = nullptr;
    const QString free = freeName(group, name, false, &existing);
    if (existing) {
        keep(existing);
        return existing;
    }
    MatrixData* node = m_makeColumn(free, typeName, rows);
    if (!node)
        return nullptr;
    attach(group, node, false);
    if (made)
        *made = true;
    return node;
}

void DerivedColumnWriter::keep(MatrixData* node)
{
    if (!node || madeHere(node) || std::find(m_kept.begin(), m_kept.end(), node) != m_kept.end())
        return;
    auto* restore = new MatrixDataRestore(node, m_actionName, false);
    restore->recordNodeSnapshot();
    m_record->addToList(restore, nullptr);
    m_kept.push_back(node);
}

void DerivedColumnWriter::record(MatrixDataRestore* restore)
{
    if (restore)
        m_record->addToList(restore, nullptr);
}

bool DerivedColumnWriter::commit()
{
    if (!m_root || !m_record || m_record->size() == 0)
        return false;
    m_record->setParent(m_root);
    m_root->appendUndoAction(m_record.release(), true);
    return true;
}

} // namespace rkBase
