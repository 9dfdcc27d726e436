#pragma once
// The demo host: a main window around one analyser, with the file, edit and view commands a
// host application gives its users. It owns the unit registry and walks the root's undo list.

#include <QMainWindow>

class QAction;

namespace rkBase {
class QChartDrawingArea;
class QDataAnalyserDialog;
class QModifyCellsDialog;
class QScatDepthPlotWidget;
class UnitRegistry;
}

class HostMainWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit HostMainWindow(QWidget* parent = nullptr);
    ~HostMainWindow() override;

    // Loads a CSV as a new sheet; problems go to one message box unless quiet.
    bool openCsv(const QString& fileName, bool quiet);
    rkBase::QDataAnalyserDialog* analyser() const { return m_analyser; }
    // Brings the tab of a key ("TABLE", "BARCHART", ...) to the front; false for a key that has
    // no tab in this window.
    bool showTab(const QString& key);
    // Brings the page of this title to the front in any tab widget of the current chart.
    bool showChartPage(const QString& title);
    // Sets a control of the current tab by its object name as a user would: a combo box to the
    // entry of that text (activated), a check box, radio button or checkable group to "true" or
    // "false" (clicked), a spin box to the number. False when there is no such control or value.
    bool setControl(const QString& name, const QString& value);
    // Selects table rows first..last (counted from 1, as the table shows them), as a selection
    // made on a chart would; false when the range holds no row of the sheet.
    bool selectRows(int first, int last);
    // The attributes the charts show, as a user would choose them: dip and azimuth on both nets,
    // x and y on the cross plot; an empty name keeps the current choice. False with a message
    // naming what the sheet lacks.
    bool chooseColumns(const QString& dip, const QString& azimuth, const QString& x, const QString& y,
                       QString* error);

    // ---- chart export ----
    // The chart on the analyser's current tab page, or null when it shows none.
    rkBase::QChartDrawingArea* currentChart() const;
    // Writes the current chart by the name's suffix: .emf (vectors, as the metafile copy), .png
    // (what the chart shows), .svg (vectors). False with a message if there is no chart or the
    // file cannot be written.
    bool exportChart(const QString& fileName, QString* error);

    // ---- structural interpretation ----
    // The SCAT window on the loaded well's dip, azimuth and measured depth, its scenario seeded
    // from the well's SCAT rows; made on first use, null when the sheet lacks those columns.
    rkBase::QScatDepthPlotWidget* scatWindow();

public slots:
    void openCsvDialog();
    void saveAs();
    void exportChartDialog();
    void showModifyCells();
    void modifyCells();
    void insertRow();
    void deleteRows();
    void undo();
    void redo();
    void copy();
    void paste();
    void setLightMode(bool on);
    void updateUndoActions();
    void showScatWindow();
    // Which marker kinds the sheet shows, asked and handed to the analyser.
    void showMarkerVisibility();
    // The interpreted planes go back to the sheet as marker rows (SCAT ticked), and the erased
    // ones leave it; the window then re-reads its tops from the well.
    void createWellMarkers();
    void deleteWellMarkers();

protected:
    // The window's splitters and panel controls are kept for the next start.
    void closeEvent(QCloseEvent* event) override;

private:
    // The columns the chart tabs open on, chosen by name on a freshly loaded sheet.
    void chooseChartColumns();

    rkBase::UnitRegistry* m_registry;
    rkBase::QDataAnalyserDialog* m_analyser;
    rkBase::QModifyCellsDialog* m_modifyCells = nullptr;
    QAction* m_undo = nullptr;
    QAction* m_redo = nullptr;
    rkBase::QScatDepthPlotWidget* m_scat = nullptr;
};
