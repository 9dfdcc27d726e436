#pragma once
// The tool box of a chart panel's settings pages ("Display", "Symbol Attribute Settings", ...).
// The panels use it as a plain QToolBox (addItem, removeItem, indexOf, setCurrentIndex, pages
// found by object name); what it adds is the look: page titles as clear headers, bold on a
// shaded bar, the open page's header highlighted and marked with an open marker, the others with
// a closed one.
//
// The header icons are the box's markers: an icon set on a page is replaced when the open page
// changes.
//
// A page never cuts its controls sideways: the box asks for the width its widest page needs
// (QToolBox alone lets a narrow side panel scroll check boxes out of sight), up to kMostWidth so
// that a window still fits a small screen; the selection boxes of its pages show at least
// kBoxCharacters characters and do not grow with long column names.

#include <QIcon>
#include <QToolBox>

class QDecoratedToolBox : public QToolBox
{
    Q_OBJECT
public:
    explicit QDecoratedToolBox(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~QDecoratedToolBox() override;

    // The markers the headers carry.
    QIcon openMarker() const { return m_open; }
    QIcon closedMarker() const { return m_closed; }

    QSize minimumSizeHint() const override;

    static constexpr int kMostWidth = 360;
    static constexpr int kBoxCharacters = 12;

protected:
    void itemInserted(int index) override;
    void itemRemoved(int index) override;
    void changeEvent(QEvent* event) override;

private:
    void makeMarkers();
    void markPages();

    QIcon m_open;
    QIcon m_closed;
};
