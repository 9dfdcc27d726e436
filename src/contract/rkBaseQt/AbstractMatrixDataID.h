#pragma once
// The host's identity object for a data-tree node. The tree keeps and deletes it, and copies
// it with the node so a snapshot still knows where its data came from.

namespace rkBase {

class AbstractMatrixDataID
{
public:
    virtual ~AbstractMatrixDataID() = default;
    virtual AbstractMatrixDataID* clone() const = 0;
};

} // namespace rkBase
