#pragma once
// A tree's full serialised form: two trees are the same to the last cell, name, flag and colour
// exactly when these bytes are equal.

#include <MatrixData.h>

#include <QByteArray>
#include <QDataStream>

inline QByteArray treeBytes(const rkBase::MatrixData& node, bool withChildren = true)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    node.putDataOnStream(out, withChildren);
    return bytes;
}
