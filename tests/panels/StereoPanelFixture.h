#pragma once
// A stereo panel over a small sheet, wired as its owner wires it: when the panel asks for new
// data, the columns named in its boxes are handed back with the rows the table holds.

#include "PanelFixture.h"

#include <QStereoChartWidget.h>
#include <QStereoPlotWidget.h>

#include <QLabel>

namespace panelfixture {

struct StereoPanel {
    Sheet& sheet;
    std::unique_ptr<QStereoChartWidget> w;
    int reloads = 0;
    std::vector<int> tableRows;
    explicit StereoPanel(Sheet& s, bool extended = true) : StereoPanel(s, nullptr, extended) {}
    // panel: a panel made elsewhere (a derived one), owned from here on.
    StereoPanel(Sheet& s, QStereoChartWidget* panel, bool extended = true) : sheet(s)
    {
        w.reset(panel ? panel
                      : new QStereoChartWidget(QStringLiteral("Stereo Projection"), nullptr, nullptr, extended, extended));
        w->resize(1000, 700);
        w->setDataRoot(sheet.root.get());
        refillBoxes();
        QObject::connect(w.get(), &QStereoChartWidget::dataSetSelected, [this] { reload(); });
    }
    void refillBoxes()
    {
        w->updateDataSetSelectionBox(sheet.names(), sheet.ids());
        w->updateSymbolAttributeDataSetSelectionBox(sheet.names(), sheet.ids());
        w->updateColorAttributeDataSetSelectionBox(sheet.names(), sheet.ids());
        w->updateLineationDataSetSelectionBox(sheet.names(), sheet.ids());
        w->updatePitchDirectionDataSetSelectionBox(sheet.names(), sheet.ids());
    }
    void reload()
    {
        ++reloads;
        w->setDataSet(sheet.column(w->currentDipSelectedDataSetName()),
                      sheet.column(w->currentAzimuthSelectedDataSetName()),
                      sheet.column(w->currentColorSelectedDataSetName()),
                      sheet.column(w->currentSymbolSelectedDataSetName()), nullptr, nullptr, tableRows);
    }
    // The panel on screen (the net is laid out on the chart's size) with these columns.
    void show(const QString& dip = QStringLiteral("dip"), const QString& azimuth = QStringLiteral("azimuth"))
    {
        if (!w->isVisible()) {
            w->show();
            QVERIFY(QTest::qWaitForWindowExposed(w.get()));
        }
        select("m_pqDipComboBox", dip);
        select("m_pqAzimuthComboBox", azimuth);
        reload();
    }
    void select(const char* box, const QString& text)
    {
        QComboBox* c = child<QComboBox>(box);
        const int at = c->findText(text);
        QVERIFY2(at >= 0, qPrintable(text));
        c->setCurrentIndex(at);
    }
    template <class T>
    T* child(const char* name) const
    {
        T* c = w->findChild<T*>(QString::fromLatin1(name));
        if (!c)
            qWarning("no control %s", name);
        return c;
    }
    // A page of the tool box, or one taken out of it (then a direct child of the panel).
    QWidget* page(const char* name) const
    {
        const QString n = QString::fromLatin1(name);
        QWidget* box = child<QWidget>("m_pqStereoToolBox");
        QWidget* p = box->findChild<QWidget*>(n);
        return p ? p : w->findChild<QWidget*>(n, Qt::FindDirectChildrenOnly);
    }
    QString text(const char* label) const { return child<QLabel>(label)->text(); }
    // Picks an entry of a box as the user would: current index and the activated signals.
    void activate(const char* box, const QString& text)
    {
        QComboBox* c = child<QComboBox>(box);
        const int at = c->findText(text);
        QVERIFY2(at >= 0, qPrintable(text));
        c->setCurrentIndex(at);
        emit c->activated(at);
        emit c->activated(text);
    }
    // Every label's text, for the checks that no number turned into "nan" or "inf".
    QStringList labelTexts() const
    {
        QStringList out;
        for (QLabel* l : w->findChildren<QLabel*>())
            out << l->objectName() + QLatin1Char('=') + l->text();
        return out;
    }
};

// Dip and azimuth columns named "dip" and "azimuth".
inline void addOrientations(Sheet& s, const QVector<double>& dips, const QVector<double>& azimuths)
{
    s.add(QStringLiteral("dip"), dips);
    s.add(QStringLiteral("azimuth"), azimuths);
}

// A cluster of planes around 40/120 and one around 70/300.
inline void addTwoClusters(Sheet& s)
{
    addOrientations(s, {38, 40, 42, 41, 39, 68, 70, 72, 71, 69}, {118, 120, 122, 121, 119, 298, 300, 302, 301, 299});
}

} // namespace panelfixture
