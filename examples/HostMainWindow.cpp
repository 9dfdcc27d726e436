#include "HostMainWindow.h"

#include "CsvSheetReader.h"

#include <MatrixData.h>
#include <QChartDrawingArea.h>
#include <QCrossPlotWidget.h>
#include <QDepthPlotWidget.h>
#include <QStereoChartWidget.h>
#include <QTangentChartWidget.h>
#include <MatrixDataRestore.h>
#include <QDataAnalyserDialog.h>
#include <QMarkerVisibilityDlg.h>
#include <QModifyCellsDialog.h>
#include <QScatDepthPlotWidget.h>
#include <DepthLineField.h>
#include <QHistogramChartWidget.h>
#include <QVertexItemModel.h>
#include <QVertexModelTableView.h>
#include <TabWidgetWithFloatingTabs.h>
#include <UnitRegistry.h>

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QCloseEvent>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QGroupBox>
#include <QKeySequence>
#include <QMenuBar>
#include <QMessageBox>
#include <QPainter>
#include <QSpinBox>

#include <vector>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBox>
#ifdef RK_HAVE_SVG
#include <QSvgGenerator>
#endif

#include <algorithm>

using rkBase::MatrixData;

HostMainWindow::HostMainWindow(QWidget* parent)
    : QMainWindow(parent), m_registry(new rkBase::UnitRegistry(this)), m_analyser(new rkBase::QDataAnalyserDialog(this))
{
    setWindowTitle(tr("rkBaseTools demo"));
    m_analyser->dataRoot()->setRegistry(m_registry);
    m_analyser->initialize(QStringLiteral("demo"), nullptr, m_registry, Qt::Horizontal, false, true, true, true, true,
                           true, 1, false, false);
    // A cell typed over must come back with Edit > Undo, as every other change does.
    if (m_analyser->vertexItemModel())
        m_analyser->vertexItemModel()->enableUndoRedo(true);
    setCentralWidget(m_analyser);

    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Open CSV..."), this, SLOT(openCsvDialog()), QKeySequence::Open);
    file->addAction(tr("Save &As..."), this, SLOT(saveAs()), QKeySequence::SaveAs);
    file->addAction(tr("&Export Chart..."), this, SLOT(exportChartDialog()));
    file->addSeparator();
    file->addAction(tr("&Quit"), this, SLOT(close()), QKeySequence::Quit);

    QMenu* edit = menuBar()->addMenu(tr("&Edit"));
    m_undo = edit->addAction(tr("&Undo"), this, SLOT(undo()), QKeySequence::Undo);
    m_redo = edit->addAction(tr("&Redo"), this, SLOT(redo()), QKeySequence::Redo);
    edit->addSeparator();
    edit->addAction(QIcon(QStringLiteral(":/rkBaseQt/Resources/page_copy.png")), tr("&Copy"), this, SLOT(copy()),
                    QKeySequence::Copy);
    edit->addAction(QIcon(QStringLiteral(":/rkBaseQt/Resources/page_paste.png")), tr("&Paste"), this, SLOT(paste()),
                    QKeySequence::Paste);
    edit->addSeparator();
    edit->addAction(QIcon(QStringLiteral(":/rkBaseQt/Resources/find.png")), tr("&Select Cells..."), m_analyser,
                    SLOT(showSelectValueCellsDlg()), QKeySequence::Find);
    edit->addAction(QIcon(QStringLiteral(":/rkBaseQt/Resources/arrow_switch.png")), tr("&Invert Selection"), m_analyser,
                    SLOT(selectInverse()));
    edit->addAction(QIcon(QStringLiteral(":/rkBaseQt/Resources/table_edit.png")), tr("&Modify Cells..."), this,
                    SLOT(showModifyCells()));
    edit->addSeparator();
    edit->addAction(QIcon(QStringLiteral(":/rkBaseQt/Resources/table_row_insert.png")), tr("&Insert Row"), this,
                    SLOT(insertRow()), QKeySequence(Qt::CTRL | Qt::Key_Insert));
    edit->addAction(QIcon(QStringLiteral(":/rkBaseQt/Resources/table_row_delete.png")), tr("&Delete Rows"), this,
                    SLOT(deleteRows()), QKeySequence(Qt::CTRL | Qt::Key_Delete));

    QMenu* view = menuBar()->addMenu(tr("&View"));
    QAction* light = view->addAction(tr("&Light mode"));
    light->setCheckable(true);
    connect(light, SIGNAL(toggled(bool)), this, SLOT(setLightMode(bool)));
    view->addAction(tr("&SCAT Window..."), this, SLOT(showScatWindow()), QKeySequence(Qt::CTRL | Qt::Key_T));
    view->addAction(tr("&Marker Visibility..."), this, SLOT(showMarkerVisibility()));

    connect(m_analyser, SIGNAL(dataModified(bool)), this, SLOT(updateUndoActions()));
    updateUndoActions();
    resize(1200, 760);
}

HostMainWindow::~HostMainWindow() = default;

void HostMainWindow::closeEvent(QCloseEvent* event)
{
    m_analyser->saveSettings();
    if (m_scat)
        m_scat->writeSettings();
    QMainWindow::closeEvent(event);
}

bool HostMainWindow::openCsv(const QString& fileName, bool quiet)
{
    CsvSheetReader reader;
    MatrixData* sheet = reader.read(fileName, QFileInfo(fileName).completeBaseName());
    if (!reader.problems().isEmpty() && !quiet)
        QMessageBox::warning(this, tr("Open CSV"),
                             tr("Some of %1 could not be read:\n\n%2").arg(fileName, reader.problems().join(QLatin1Char('\n'))));
    if (!sheet)
        return false;
    MatrixData* root = m_analyser->dataRoot();
    QString name = sheet->name();
    root->createUniqueName(name);
    sheet->setName(name);
    sheet->setInterfaceName(name);
    root->appendChild(sheet, true);
    // Columns the analyser knows how to show in units.
    for (MatrixData* c : sheet->leafs()) {
        const QString n = c->name().toLower();
        if (c->cellType() != QVariant::Double)
            continue;
        if (n == QLatin1String("dip") || n == QLatin1String("azimuth"))
            c->setUnitManager(rkBase::UnitRegistry::CATEGORY_ORIENTATION);
        else if (n.contains(QLatin1String("depth")) || n == QLatin1String("z") || n.startsWith(QLatin1String("x("))
                 || n.startsWith(QLatin1String("y(")))
            c->setUnitManager(rkBase::UnitRegistry::CATEGORY_ELEVATION);
        else if (n.contains(QLatin1String("porosity")))
            c->setUnitManager(rkBase::UnitRegistry::CATEGORY_FRACTION);
        c->setMinMax(0, std::vector<int>());
    }
    m_analyser->updateAllViews(false, false);
    m_analyser->hideShowOrientationWindows();
    chooseChartColumns();
    statusBar()->showMessage(tr("%1: %2 rows, %3 columns").arg(QFileInfo(fileName).fileName())
                                 .arg(sheet->maxNumbOfSelectedRows(1, 0))
                                 .arg(sheet->childCount()));
    return true;
}

void HostMainWindow::chooseChartColumns()
{
    // What a petrophysicist looks at first on a well: porosity against depth in the cross plot,
    // and the porosity log along measured depth in the depth track. A sheet without these columns
    // keeps the panels' own choice. The cross plot's left axis is widened so that its title
    // fits beside the tick labels.
    if (rkBase::QCrossPlotWidget* cross = m_analyser->crossPlotChart()) {
        cross->setCurrentHorizontalSelectedDataSet(QStringLiteral("Measured Depth"));
        cross->setCurrentVerticalSelectedDataSet(QStringLiteral("Porosity"));
        cross->setFixedAxisWidth(80, 55);
    }
    // Its distribution too: a histogram of measured depth is a flat block.
    if (rkBase::QHistogramChartWidget* histogram = m_analyser->histogramChart())
        histogram->setCurrentDataSet(QStringLiteral("Porosity"));
    if (rkBase::QDepthPlotWidget* depth = m_analyser->depthPlotChart()) {
        depth->setCurrentHorizontalSelectedDataSet(QStringLiteral("Porosity"));
        depth->setCurrentVerticalSelectedDataSet(QStringLiteral("Measured Depth"));
    }
    // Bedding dips and dip azimuths on both nets.
    for (rkBase::QStereoChartWidget* net : {m_analyser->stereoChart(),
                                            static_cast<rkBase::QStereoChartWidget*>(m_analyser->tangentChart())}) {
        if (!net)
            continue;
        net->setCurrentDipSelectedDataSet(QStringLiteral("dip"));
        net->setCurrentAzimuthSelectedDataSet(QStringLiteral("azimuth"));
    }
    m_analyser->resetChartsUpdateNeeded();
    m_analyser->slotTabWidgetChanged();
}

namespace {
// Picks the attribute of that name in a panel's box (none: leaves it); false when the box has none.
template <class Panel>
bool chooseColumn(Panel* panel, void (Panel::*set)(const QString&), QString (Panel::*current)() const,
                  const QString& name)
{
    if (name.isEmpty())
        return true;
    (panel->*set)(name);
    return (panel->*current)() == name;
}
} // namespace

bool HostMainWindow::chooseColumns(const QString& dip, const QString& azimuth, const QString& x, const QString& y,
                                QString* error)
{
    if (dip.isEmpty() && azimuth.isEmpty() && x.isEmpty() && y.isEmpty())
        return true;
    auto refuse = [this, error](const QString& option, const QString& name) {
        *error = tr("The sheet has no attribute \"%2\" to show as %1.").arg(option, name);
        return false;
    };
    using Net = rkBase::QStereoChartWidget;
    using Cross = rkBase::QCrossPlotWidget;
    for (Net* net : {m_analyser->stereoChart(), static_cast<Net*>(m_analyser->tangentChart())}) {
        if (!net)
            continue;
        if (!chooseColumn(net, &Net::setCurrentDipSelectedDataSet, &Net::currentDipSelectedDataSetName, dip))
            return refuse(QStringLiteral("dip"), dip);
        if (!chooseColumn(net, &Net::setCurrentAzimuthSelectedDataSet, &Net::currentAzimuthSelectedDataSetName, azimuth))
            return refuse(QStringLiteral("azimuth"), azimuth);
    }
    if (Cross* cross = m_analyser->crossPlotChart()) {
        if (!chooseColumn(cross, &Cross::setCurrentHorizontalSelectedDataSet,
                          &Cross::currentHorizontalSelectedDataSetName, x))
            return refuse(QStringLiteral("x"), x);
        if (!chooseColumn(cross, &Cross::setCurrentVerticalSelectedDataSet, &Cross::currentVerticalSelectedDataSetName,
                          y))
            return refuse(QStringLiteral("y"), y);
    }
    m_analyser->resetChartsUpdateNeeded();
    m_analyser->slotTabWidgetChanged();
    return true;
}

bool HostMainWindow::showTab(const QString& key)
{
    rkBase::TabWidgetWithFloatingTabs* tabs = m_analyser->tabWidget();
    QWidget* page = tabs ? tabs->findPage(key) : nullptr;
    if (!page || tabs->indexOf(page) < 0)
        return false;
    tabs->setCurrentWidget(page);
    return true;
}

bool HostMainWindow::showChartPage(const QString& title)
{
    rkBase::TabWidgetWithFloatingTabs* tabs = m_analyser->tabWidget();
    QWidget* current = tabs ? tabs->currentWidget() : nullptr;
    if (!current)
        return false;
    // Tool box pages open the same way as tabs.
    for (QToolBox* box : current->findChildren<QToolBox*>())
        for (int i = 0; i < box->count(); ++i)
            if (box->itemText(i) == title) {
                box->setCurrentIndex(i);
                return true;
            }
    for (QTabWidget* inner : current->findChildren<QTabWidget*>()) {
        for (int i = 0; i < inner->count(); ++i) {
            if (inner->tabText(i) == title) {
                inner->setCurrentIndex(i);
                return true;
            }
        }
    }
    return false;
}

bool HostMainWindow::setControl(const QString& name, const QString& value)
{
    rkBase::TabWidgetWithFloatingTabs* tabs = m_analyser->tabWidget();
    QWidget* current = tabs ? tabs->currentWidget() : nullptr;
    QWidget* control = current ? current->findChild<QWidget*>(name) : nullptr;
    const bool on = value == QLatin1String("true");
    if (!on && value != QLatin1String("false") && (qobject_cast<QAbstractButton*>(control) || qobject_cast<QGroupBox*>(control)))
        return false;
    if (auto* combo = qobject_cast<QComboBox*>(control)) {
        const int at = combo->findText(value);
        if (at < 0)
            return false;
        combo->setCurrentIndex(at);
        emit combo->activated(at);
        return true;
    }
    if (auto* group = qobject_cast<QGroupBox*>(control)) {
        if (!group->isCheckable())
            return false;
        group->setChecked(on);
        emit group->clicked(on);
        return true;
    }
    if (auto* button = qobject_cast<QAbstractButton*>(control)) {
        if (button->isChecked() != on)
            button->click();
        return true;
    }
    bool ok = false;
    if (auto* spin = qobject_cast<QSpinBox*>(control)) {
        const int v = value.toInt(&ok);
        if (ok)
            spin->setValue(v);
        return ok;
    }
    if (auto* spin = qobject_cast<QDoubleSpinBox*>(control)) {
        const double v = value.toDouble(&ok);
        if (ok)
            spin->setValue(v);
        return ok;
    }
    return false;
}

bool HostMainWindow::selectRows(int first, int last)
{
    rkBase::QVertexItemModel* model = m_analyser->vertexItemModel();
    const int rows = model ? model->rowCount() : 0;
    first = std::max(first, 1);
    last = std::min(last, rows);
    if (first > last)
        return false;
    boost::dynamic_bitset<> bits(static_cast<std::size_t>(rows));
    for (int r = first - 1; r < last; ++r)
        bits.set(static_cast<std::size_t>(r));
    m_analyser->setNewRowSelectionFromGraphicalSelection(bits);
    return true;
}

void HostMainWindow::openCsvDialog()
{
    const QString file = QFileDialog::getOpenFileName(this, tr("Open CSV"), QString(), tr("CSV files (*.csv);;All files (*)"));
    if (!file.isEmpty())
        openCsv(file, false);
}

void HostMainWindow::showModifyCells()
{
    if (!m_modifyCells) {
        QString name;
        rkBase::QVertexModelTableView* table = m_analyser->vertexTable();
        const QVariant::Type type = table ? table->firstSelectedCellType(name) : QVariant::Invalid;
        m_modifyCells = new rkBase::QModifyCellsDialog(tr("Modify Cells"), type != QVariant::String, this);
        connect(m_modifyCells, SIGNAL(clicked()), this, SLOT(modifyCells()));
    }
    m_modifyCells->show();
    m_modifyCells->raise();
}

void HostMainWindow::modifyCells()
{
    rkBase::QVertexModelTableView* table = m_analyser->vertexTable();
    if (!table || !m_modifyCells)
        return;
    table->modifySelectedCells(m_modifyCells->value(), m_modifyCells->method(), m_modifyCells->getAttribute());
    m_modifyCells->updateValueComboBox();
    table->viewport()->update();
    updateUndoActions();
}

void HostMainWindow::insertRow()
{
    m_analyser->insertAfterSelectedRow(false, false);
}

void HostMainWindow::deleteRows()
{
    if (m_analyser->vertexTable() && m_analyser->vertexTable()->selectedRows(0).empty()) {
        statusBar()->showMessage(tr("Select whole rows first: click their numbers on the left."), 4000);
        return;
    }
    m_analyser->removeSelectedRows(false, false);
}

void HostMainWindow::saveAs()
{
    m_analyser->slotSaveAs();
}

void HostMainWindow::undo()
{
    if (m_analyser->dataRoot()->undoLastAction())
        m_analyser->updateAllViews(false, true);
    updateUndoActions();
}

void HostMainWindow::redo()
{
    if (m_analyser->dataRoot()->redoNextAction())
        m_analyser->updateAllViews(false, true);
    updateUndoActions();
}

void HostMainWindow::copy()
{
    m_analyser->copyToClipboard();
}

void HostMainWindow::paste()
{
    m_analyser->pasteFromClipboard();
}

void HostMainWindow::setLightMode(bool on)
{
    if (on)
        m_analyser->setLightMode();
}

void HostMainWindow::updateUndoActions()
{
    MatrixData* root = m_analyser->dataRoot();
    const int position = root->undoPosition();
    m_undo->setEnabled(position > 0);
    m_redo->setEnabled(position < root->sizeUndoActions());
    m_undo->setText(position > 0 ? tr("&Undo %1").arg(root->undoAction(position - 1)->name()) : tr("&Undo"));
    m_redo->setText(position < root->sizeUndoActions() ? tr("&Redo %1").arg(root->undoAction(position)->name())
                                                      : tr("&Redo"));
}

// ---- chart export ----

rkBase::QChartDrawingArea* HostMainWindow::currentChart() const
{
    QTabWidget* tabs = m_analyser->tabWidget();
    QWidget* page = tabs ? tabs->currentWidget() : nullptr;
    if (!page)
        return nullptr;
    if (auto* chart = qobject_cast<rkBase::QChartDrawingArea*>(page))
        return chart;
    // A panel may hold further charts on pages not shown (the stereonet's Woodcock diagram and
    // Fisher plots): the chart is the largest one on screen.
    rkBase::QChartDrawingArea* best = nullptr;
    for (rkBase::QChartDrawingArea* chart : page->findChildren<rkBase::QChartDrawingArea*>())
        if (chart->isVisible()
            && (!best || chart->width() * chart->height() > best->width() * best->height()))
            best = chart;
    return best ? best : page->findChild<rkBase::QChartDrawingArea*>();
}

bool HostMainWindow::exportChart(const QString& fileName, QString* error)
{
    rkBase::QChartDrawingArea* chart = currentChart();
    if (!chart) {
        *error = tr("The current tab shows no chart.");
        return false;
    }
    const QString suffix = QFileInfo(fileName).suffix().toLower();
    bool ok = false;
    if (suffix == QLatin1String("emf")) {
        ok = !chart->toEnhancedMetafile(fileName).isEmpty();
    } else if (suffix == QLatin1String("png")) {
        ok = chart->visibleChartImage().save(fileName, "PNG");
#ifdef RK_HAVE_SVG
    } else if (suffix == QLatin1String("svg")) {
        QSvgGenerator svg;
        svg.setFileName(fileName);
        svg.setSize(chart->size());
        svg.setViewBox(chart->pixmapRect());
        svg.setTitle(chart->headerTitle().isEmpty() ? chart->baseTitle() : chart->headerTitle());
        QPainter painter;
        ok = painter.begin(&svg);
        if (ok) {
            chart->drawChart(painter);
            chart->drawAxis(painter, chart->pixmapRect());
            ok = painter.end();
        }
#endif
    } else {
        *error = tr("Charts are exported as .emf, .png or .svg, not as \"%1\".").arg(suffix);
        return false;
    }
    if (!ok)
        *error = tr("Could not write %1.").arg(fileName);
    return ok;
}

void HostMainWindow::exportChartDialog()
{
    if (!currentChart()) {
        statusBar()->showMessage(tr("The current tab shows no chart."), 4000);
        return;
    }
    QString filters = tr("Enhanced metafile (*.emf);;PNG image (*.png)");
#ifdef RK_HAVE_SVG
    filters += tr(";;SVG drawing (*.svg)");
#endif
    QString selected;
    QString file = QFileDialog::getSaveFileName(this, tr("Export Chart"), QString(), filters, &selected);
    if (file.isEmpty())
        return;
    if (QFileInfo(file).suffix().isEmpty()) // the filter names the type
        file += selected.mid(selected.indexOf(QLatin1String("*.")) + 1).chopped(1);
    QString error;
    if (exportChart(file, &error))
        statusBar()->showMessage(tr("Chart exported to %1").arg(file), 4000);
    else
        QMessageBox::warning(this, tr("Export Chart"), error);
}

// ---- structural interpretation ----

namespace {
MatrixData* wellSheet(MatrixData* root)
{
    MatrixData* dip = root ? root->getNodeFromName(QStringLiteral("dip")) : nullptr;
    return dip ? dip->parent() : nullptr;
}
} // namespace

rkBase::QScatDepthPlotWidget* HostMainWindow::scatWindow()
{
    MatrixData* root = m_analyser->dataRoot();
    MatrixData* dip = root->getNodeFromName(QStringLiteral("dip"));
    MatrixData* azimuth = root->getNodeFromName(QStringLiteral("azimuth"));
    MatrixData* depth = root->getNodeFromName(QStringLiteral("Measured Depth"));
    if (!dip || !azimuth || !depth)
        return nullptr;
    if (!m_scat) {
        m_scat = new rkBase::QScatDepthPlotWidget(this, root, Qt::Window);
        m_scat->setWindowTitle(tr("SCAT - %1").arg(wellSheet(root) ? wellSheet(root)->name() : QString()));
        m_scat->resize(1280, 820);
        m_scat->readSettings();
        connect(m_scat, SIGNAL(createWellMarkers()), this, SLOT(createWellMarkers()));
        connect(m_scat, SIGNAL(deleteWellMarkers()), this, SLOT(deleteWellMarkers()));
        // This host has no map view to draw a section in: it says what it was asked for.
        connect(m_scat, &rkBase::QScatDepthPlotWidget::createSection, this,
                [this](const QString& name, double azimuth, double halfWidth) {
                    statusBar()->showMessage(tr("Section %1 along %2\u00b0, %3 either side of the well.")
                                                 .arg(name)
                                                 .arg(azimuth, 0, 'f', 1)
                                                 .arg(halfWidth, 0, 'f', 1),
                                             6000);
                });
        connect(m_scat, &rkBase::QScatDepthPlotWidget::dataPointsSelection, m_analyser,
                &rkBase::QDataAnalyserDialog::setNewRowSelectionFromGraphicalSelection);
        // A dip analysis usually starts from the direction of the structure's dip: T along
        // the well's mean dip azimuth, L across it.
        m_scat->updateTandLdirection(135.0, 45.0);
        m_scat->setDataSet(dip, azimuth, depth, nullptr, nullptr, std::vector<int>());
        m_scat->initializeStructuralInterpretation();
        return m_scat;
    }
    // Opened again: the columns may have changed, the picks made since stay as they are.
    m_scat->setDataSet(dip, azimuth, depth, nullptr, nullptr, std::vector<int>());
    return m_scat;
}

void HostMainWindow::showMarkerVisibility()
{
    rkBase::QMarkerVisibilityDlg dialog(this);
    if (dialog.exec() == QDialog::Accepted)
        m_analyser->setMarkerVisibility(dialog.allMarkers(), dialog.scatMarkers(), dialog.decimatedMarkers(),
                                        dialog.topMarkers(), dialog.faultMarkers(), dialog.visible());
}

void HostMainWindow::showScatWindow()
{
    if (rkBase::QScatDepthPlotWidget* scat = scatWindow()) {
        scat->show();
        scat->raise();
    } else {
        statusBar()->showMessage(tr("The SCAT window needs dip, azimuth and Measured Depth columns."), 4000);
    }
}

void HostMainWindow::createWellMarkers()
{
    MatrixData* root = m_analyser->dataRoot();
    MatrixData* sheet = wellSheet(root);
    rkBase::DepthLineField* tops = m_scat ? m_scat->structuralTops() : nullptr;
    if (!sheet || !tops)
        return;
    auto column = [root](const char* name) { return root->getNodeFromName(QLatin1String(name)); };
    MatrixData* depth = column("Measured Depth");
    const auto& depths = tops->lineDepths();
    const auto& rows = tops->originalRowPos();
    const auto& moved = tops->originalDepthChanged();
    std::vector<std::size_t> fresh;
    for (std::size_t i = 0; i < depths.size(); ++i) {
        const int row = i < rows.size() ? rows[i] : -1;
        if (row < 0)
            fresh.push_back(i);
        else if (i < moved.size() && moved[i] && depth)
            depth->setValue(row, 0, depths[i]);
    }
    // New tops become new last records, added in one step that Edit > Undo takes back.
    const int added = static_cast<int>(fresh.size());
    m_analyser->addNewMarkerData(depth ? depth->rowCount() : sheet->rowCount(), added);
    const int first = m_analyser->firstNewHostRow();
    for (int k = 0; first >= 0 && k < added; ++k) {
        const std::size_t i = fresh[std::size_t(k)];
        const int at = first + k;
        const QPointF o = i < tops->lineOrientations().size() ? tops->lineOrientations()[i] : QPointF();
        const QList<QPair<const char*, QVariant>> cells = {
            {"Measured Depth", depths[i]},
            {"SCAT", true},
            {"Type", rkBase::DepthLineField::type(tops->lineTypes()[i])},
            {"Name", tops->lineNames()[i]},
            {"Vertex_colour", tops->lineColors()[i]},
            {"dip", o.x() > 0.0 ? QVariant(o.x()) : QVariant()},
            {"azimuth", o.x() > 0.0 ? QVariant(o.y()) : QVariant()}};
        for (const auto& cell : cells)
            if (MatrixData* c = column(cell.first))
                c->setValue(at, 0, cell.second);
    }
    sheet->checkValidRowCount();
    m_analyser->updateAllViews(true, true);
    m_scat->clearAllStructuralTops();
    m_scat->initializeStructuralInterpretation();
    statusBar()->showMessage(tr("%n marker row(s) added to the well.", nullptr, added), 4000);
}

void HostMainWindow::deleteWellMarkers()
{
    MatrixData* sheet = wellSheet(m_analyser->dataRoot());
    rkBase::DepthLineField* tops = m_scat ? m_scat->structuralTops() : nullptr;
    if (!sheet || !tops)
        return;
    QList<int> rows;
    for (int row : tops->deletedOriginalRowPos())
        if (row >= 0 && !rows.contains(row))
            rows << row;
    if (!rows.isEmpty()) {
        sheet->removeRowsFromEachColumn(rows, true);
        sheet->checkValidRowCount();
        m_analyser->updateAllViews(true, true);
    }
    m_scat->clearAllStructuralTops();
    m_scat->initializeStructuralInterpretation();
    statusBar()->showMessage(tr("%n marker row(s) removed from the well.", nullptr, rows.size()), 4000);
}
