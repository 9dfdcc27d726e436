#include "PanelComboBoxes.h"

#include <MatrixData.h>

#include <QComboBox>
#include <QCoreApplication>
#include <QSignalBlocker>

#include <cstdlib>

namespace rkBase {

QString PanelComboBoxes::noneText()
{
    return QCoreApplication::translate("QCrossPlotWidget", "None");
}

QString PanelComboBoxes::refill(QComboBox* box, const QStringList& names, const QList<int>& ids,
                                const QStringList& leaveOut)
{
    if (!box)
        return QString();
    const QString old = box->currentText();
    const QSignalBlocker blocker(box);
    box->clear();
    for (int i = 0; i < names.size(); ++i)
        if (!leaveOut.contains(names[i]))
            box->addItem(names[i], i < ids.size() ? ids[i] : -1);
    return old;
}

int PanelComboBoxes::refillWithNone(QComboBox* box, const QStringList& names, const QList<int>& ids, int index,
                                    const QString& keepText)
{
    if (!box)
        return -1;
    const QString old = keepText.isEmpty() ? box->currentText() : keepText;
    const QSignalBlocker blocker(box);
    box->clear();
    box->addItem(noneText(), -1);
    for (int i = 0; i < names.size(); ++i) {
        const int id = i < ids.size() ? ids[i] : -1;
        box->addItem(names[i], id == -1 ? -1 : std::abs(id));
    }
    int at = -1;
    if (!old.isEmpty())
        at = box->findText(old, Qt::MatchExactly | Qt::MatchCaseSensitive);
    else if (index >= 0 && index < names.size())
        at = index;
    box->setCurrentIndex(at < 0 ? 0 : at);
    return box->currentIndex();
}

bool PanelComboBoxes::selectText(QComboBox* box, const QString& text)
{
    if (!box)
        return false;
    const int at = box->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (at < 0)
        return false;
    box->setCurrentIndex(at);
    return true;
}

void PanelComboBoxes::selectTextOrNone(QComboBox* box, const QString& text)
{
    if (!selectText(box, text))
        selectText(box, noneText());
}

int PanelComboBoxes::currentId(const QComboBox* box)
{
    if (!box || box->currentIndex() < 0)
        return -1;
    bool ok = false;
    const int id = box->currentData().toInt(&ok);
    return ok ? id : -1;
}

MatrixData* PanelComboBoxes::findColumn(const MatrixData* root, const QString& name)
{
    if (!root || name.isEmpty() || name == noneText())
        return nullptr;
    for (MatrixData* leaf : root->leafs())
        if (leaf->name() == name)
            return leaf;
    return nullptr;
}

} // namespace rkBase
