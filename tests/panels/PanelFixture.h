#pragma once
// A small sheet under a data root and a cross plot panel over it, wired as its owner wires it:
// when the panel asks for new data, the columns named in its axis boxes are handed back.

#include <MatrixData.h>
#include <QCrossPlotWidget.h>

#include <QComboBox>
#include <QtTest>

#include <cmath>
#include <memory>

namespace panelfixture {

using namespace rkBase;

struct Sheet {
    std::unique_ptr<MatrixData> root{new MatrixData(QStringLiteral("root"), -1, -1, QVariant::String, true)};
    MatrixData* group = nullptr;
    Sheet()
    {
        group = new MatrixData(QStringLiteral("Sheet"), -1, -1, QVariant::String, true);
        root->appendChild(group, true);
    }
    // NaN leaves the cell blank unless storeNaN.
    MatrixData* add(const QString& name, const QVector<double>& cells, bool storeNaN = false)
    {
        auto* c = new MatrixData(name, cells.size(), 1, QVariant::Double, true);
        for (int r = 0; r < cells.size(); ++r)
            if (storeNaN || !std::isnan(cells[r]))
                c->setValue(r, 0, cells[r]);
        group->appendChild(c, false);
        return c;
    }
    MatrixData* addText(const QString& name, const QStringList& cells, QVariant::Type type = QVariant::String)
    {
        auto* c = new MatrixData(name, cells.size(), 1, type, true);
        for (int r = 0; r < cells.size(); ++r)
            c->setValue(r, 0, cells[r]);
        group->appendChild(c, false);
        return c;
    }
    // Numbers as a numeric column, or written as text into a text column.
    MatrixData* addCells(const QString& name, const QVector<double>& cells, bool asText)
    {
        if (!asText)
            return add(name, cells, true);
        QStringList t;
        for (double v : cells)
            t << QString::number(v);
        return addText(name, t);
    }
    QStringList names() const
    {
        QStringList out;
        for (MatrixData* l : root->leafs())
            out << l->name();
        return out;
    }
    QList<int> ids() const
    {
        QList<int> out;
        for (MatrixData* l : root->leafs())
            out << l->nodeId();
        return out;
    }
    MatrixData* column(const QString& name) const
    {
        for (MatrixData* l : root->leafs())
            if (l->name() == name)
                return l;
        return nullptr;
    }
};

// Picks an entry of a panel's box as the user would: current index and the activated signals.
inline void activate(QWidget* panel, const char* box, const QString& text)
{
    auto* c = panel->findChild<QComboBox*>(QString::fromLatin1(box));
    QVERIFY2(c, box);
    const int at = c->findText(text);
    QVERIFY2(at >= 0, qPrintable(text));
    c->setCurrentIndex(at);
    emit c->activated(at);
    emit c->activated(text);
}

// The panel as the analyser holds it: boxes filled from the sheet, new data on request.
struct Panel {
    Sheet& sheet;
    std::unique_ptr<QCrossPlotWidget> w;
    int reloads = 0;
    explicit Panel(Sheet& s, QCrossPlotWidget* widget = nullptr) : sheet(s), w(widget)
    {
        if (!w)
            w.reset(new QCrossPlotWidget(nullptr, nullptr));
        w->resize(900, 700);
        w->setDataRoot(sheet.root.get());
        w->updateDataSetSelectionBox(sheet.names(), sheet.ids());
        w->updateSymbolAttributeDataSetSelectionBox(sheet.names(), sheet.ids());
        w->updateColorAttributeDataSetSelectionBox(sheet.names(), sheet.ids());
        w->updateTadPoleAttributeDataSetSelectionBox(sheet.names(), sheet.ids());
        w->updateThirdDimAttributeDataSetSelectionBox(sheet.names(), sheet.ids());
        QObject::connect(w.get(), &QCrossPlotWidget::signalUpdateChartData, [this] { reload(); });
    }
    void reload()
    {
        ++reloads;
        w->setDataSet(sheet.column(w->currentHorizontalSelectedDataSetName()),
                      sheet.column(w->currentVerticalSelectedDataSetName()),
                      sheet.column(w->currentSymbolSelectedDataSetName()),
                      sheet.column(w->currentColorSelectedDataSetName()));
    }
    void show(const QString& x, const QString& y)
    {
        w->setCurrentHorizontalSelectedDataSet(x);
        w->setCurrentVerticalSelectedDataSet(y);
        reload();
    }
    template <class T>
    T* child(const char* name) const
    {
        T* c = w->findChild<T*>(QString::fromLatin1(name));
        if (!c)
            qWarning("no control %s", name);
        return c;
    }
    void activate(const char* box, const QString& text) { panelfixture::activate(w.get(), box, text); }
};

} // namespace panelfixture
