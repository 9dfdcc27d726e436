#pragma once
// The list that shows a chart legend, with its popup: recolour the selected classes, copy the
// legend as a picture. slotLegendsVerticalScrollBarChanged keeps the legend model's window of
// rendered symbols on the rows the user can see.

#include <QListView>

#include <vector>

class QMenu;

namespace rkBase {

class QLegendListModel;

class QLegendListView : public QListView
{
    Q_OBJECT
public:
    explicit QLegendListView(QWidget* parent = nullptr);

    void createDefaultPopupMenu();
    QMenu* popupMenu() const { return m_popup; }
    std::vector<int> getSelectedIDs() const;

    // The window of rows that get a symbol, from the scroll position: a page around the rows in
    // view with a margin of 15 rows either side.
    static void slotLegendsVerticalScrollBarChanged(QLegendListModel* model, int value, int minimum, int maximum,
                                                    int pageStep);

public slots:
    void changeColor();
    void copyToClipboard();
    void slotLegendsVerticalScrollBarChanged(int value);

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    QMenu* m_popup = nullptr;
};

} // namespace rkBase
