// Set-up of the SCAT window, the data path from the columns to the four tracks, and what the
// tracks share: depth range, zoom, scroll, cursor, selection and the active track.
#include "QScatDepthPlotWidget.h"

#include "ui_QScatDepthPlotWidget.h"

#include "ColumnReader.h"
#include "DepthLineField.h"
#include "PanelAxes.h"
#include "PanelBackground.h"
#include "PanelColorButton.h"
#include "PanelComboBoxes.h"
#include "PanelZoomScrollBars.h"
#include "QLegendListModel.h"
#include "QLegendListView.h"

#include <MatrixData.h>
#include <UnitManager.h>

#include <QFileDialog>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QScrollBar>
#include <QSignalBlocker>

#include <algorithm>
#include <cmath>

namespace rkBase {

namespace {
QString panelText(const char* text) { return QCoreApplication::translate("QScatDepthPlotWidget", text); }

// Apparent dip in degrees: the constants are the ones the stored columns have always been
// computed with, so that a recomputed column compares equal to an old one.
constexpr double kPi = 3.141592653589793;
constexpr double kDegrees = 57.29577951308232;

// Where a column of no usable range is drawn: the axes and the plots get 0 to 1.
void usableRange(double& lo, double& hi)
{
    if (!std::isfinite(lo) || !std::isfinite(hi) || lo > hi) {
        lo = 0.0;
        hi = 1.0;
    }
}
} // namespace

QScatDepthPlotWidget::QScatDepthPlotWidget(QWidget* parent, MatrixData* root, Qt::WindowFlags flags)
    : QWidget(parent, flags), m_pqUi(std::make_unique<Ui::QScatDepthPlotWidget>()), dataRoot(root)
{
    Ui::QScatDepthPlotWidget& ui = *m_pqUi;
    ui.setupUi(this);
    // The two attribute pages are not offered here; their controls stay reachable by name.
    for (const char* name : {"SymbolAttributeSettings", "ColorAttributeSettings"}) {
        QWidget* page = ui.m_pqToolBox->findChild<QWidget*>(QLatin1String(name));
        const int at = page ? ui.m_pqToolBox->indexOf(page) : -1;
        if (at < 0)
            continue;
        ui.m_pqToolBox->removeItem(at);
        page->setParent(this);
        page->hide();
    }
    ui.m_pqToolBox->setCurrentIndex(0);
    ui.TransparencySpinBoxWithSlider->setRange(0, 100);
    ui.TransparencySpinBoxWithSlider->setSingleStep(1);
    ui.TransparencySpinBoxWithSlider->setValue(50);

    QComboBox* display = ui.displayDataTypeComboBox;
    display->addItem(panelText("All + Highlight Selection"), int(QRelationshipItemModel::HighlightSelected));
    display->addItem(panelText("All"), int(QRelationshipItemModel::ShowAll));
    display->addItem(panelText("Selected Data Only"), int(QRelationshipItemModel::ShowSelectedOnly));
    ui.domainTypeComboBox->addItem(panelText("Stratigraphy"), int(DepthLineField::Stratigraphy));
    ui.domainTypeComboBox->addItem(panelText("Structural Domains"), int(DepthLineField::StructuralDomains));
    ui.domainTypeComboBox->addItem(panelText("None"), int(DepthLineField::NoDomain));
    ui.m_pqFontSizeSpinBox->setValue(font().pointSizeF());
    PanelColorButton::setColor(ui.pointColorButton, QColor(0, 0, 255));
    PanelColorButton::setColor(ui.lineColorButton, QColor(0, 0, 255));
    ui.cursorPosLabel->clear();
    ui.pqTDirectionUnitLineEdit->setModelValue(0.0, false);
    ui.pqLDirectionUnitLineEdit->setModelValue(0.0, false);

    ui.pqAxisLeft->setAxisPosition(QCartesianAxisWidget::AxisLeftDepth);
    ui.pqAxisLeft->setFixedWidth(70);
    const QFont small = [this] {
        QFont f = font();
        f.setBold(true);
        return f;
    }();
    for (QLabel* title : {ui.depthTitleLabel, ui.pqAzimuthTitleLabel, ui.pqDipTitleLabel, ui.pqTransverseDipTitleLabel,
                          ui.pqLongitudinalDipTitleLabel}) {
        title->setAlignment(Qt::AlignCenter);
        title->setFont(small);
    }

    createPlot(AzimuthTrack, ui.pqAzimuthPlotFrame, ui.pqAzimuthAxisTop, ui.pqAzimuthAxisBottom,
               QStringLiteral("azimuth_plot"));
    createPlot(DipTrack, ui.pqDipPlotFrame, ui.pqDipAxisTop, ui.pqDipAxisBottom, QStringLiteral("dip_plot"));
    createPlot(TransverseDipTrack, ui.pqTransverseDipPlotFrame, ui.pqTransverseDipAxisTop,
               ui.pqTransverseDipAxisBottom, QStringLiteral("transverse_dip_plot"));
    createPlot(LongitudinalDipTrack, ui.pqLongitudinalDipPlotFrame, ui.pqLongitudinalDipAxisTop,
               ui.pqLongitudinalDipAxisBottom, QStringLiteral("longitudinal_dip_plot"));
    // Four tracks of equal width, whatever their axes' labels need.
    for (int c = 1; c <= kTrackCount; ++c)
        ui.m_pqPlotLayout->setColumnStretch(c, 1);
    ui.m_pqPlotLayout->setRowStretch(2, 1);

    const QString first = QStringLiteral("Scenario_") + QString::number(azimuthItemModel()->structuralTopsSenarios().size());
    for (TrackParts& t : m_tracks)
        t.model->addStructuralTopsSenario(first);
    applyFormToNewScenario();
    updateScenarioComboBox(-1);

    ui.colorLegendView->setModel(m_tracks[AzimuthTrack].colours);
    ui.symbolLegendView->setModel(m_tracks[AzimuthTrack].symbols);
    ui.colorLegendView->createDefaultPopupMenu();
    ui.symbolLegendView->createDefaultPopupMenu();
    ui.colorLegendFrame->hide();
    ui.symbolLegendFrame->hide();
    ui.legendSplitter->hide();
    ui.sidePanelSplitter->setSizes({270, 900, 0});
    ui.verticalScrollBar->hide();

    m_question = [](QWidget* p, const QString& title, const QString& text) {
        QMessageBox box(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, p);
        box.setEscapeButton(QMessageBox::Cancel);
        return QMessageBox::StandardButton(box.exec());
    };
    m_information = [](QWidget* p, const QString& title, const QString& text) { QMessageBox::information(p, title, text); };
    m_openFileNames = [](QWidget* p, const QString& title, const QString& dir, const QString& filter) {
        return QFileDialog::getOpenFileNames(p, title, dir, filter);
    };
    m_saveFileName = [](QWidget* p, const QString& title, const QString& proposal, const QString& filter) {
        return QFileDialog::getSaveFileName(p, title, proposal, filter);
    };

    for (QCheckBox* box : {ui.m_pqShowGrid, ui.m_pqShowPointConnectionLine, ui.m_pqShowPoints, ui.showHorizons,
                           ui.showFaults, ui.showAverageOrientations, ui.showStructuralPlanes, ui.showHorizonLabels,
                           ui.showFaultLabels, ui.showAverageOrientationLabels, ui.showStructuralPlaneLabels})
        connect(box, SIGNAL(toggled(bool)), this, SLOT(updateDiagramSettings()));
    connect(ui.m_pqPointStyleComboBox, SIGNAL(activated(int)), this, SLOT(updateDiagramSettings()));
    connect(ui.m_pqPixelSizeSpinBox, SIGNAL(valueChanged(int)), this, SLOT(updateDiagramSettings()));
    connect(ui.m_pqLinePixelSizeSpinBox, SIGNAL(valueChanged(int)), this, SLOT(updateDiagramSettings()));
    connect(ui.domainTypeComboBox, SIGNAL(activated(int)), this, SLOT(updateDiagramSettings()));
    connect(ui.TransparencySpinBoxWithSlider, SIGNAL(valueChanged(int)), this, SLOT(slotDomainTransparency(int)));
    connect(ui.pointColorButton, SIGNAL(clicked()), this, SLOT(changePointColor()));
    connect(ui.lineColorButton, SIGNAL(clicked()), this, SLOT(changeLineColor()));
    connect(display, SIGNAL(activated(int)), this, SLOT(updateDisplayDataType(int)));
    connect(ui.m_pqVertexFilterSpinBox, SIGNAL(valueChanged(int)), this, SLOT(slotUpdateDiagrams()));
    for (QComboBox* box : {ui.m_pqSymbolAttributeComboBox, ui.tadpoleAttributeComboBox, ui.m_pqColorAttributeComboBox})
        connect(box, SIGNAL(activated(int)), this, SLOT(slotUpdateChartData()));
    connect(ui.pqTDirectionUnitLineEdit, SIGNAL(modelValueChanged(double)), this, SLOT(slotRotateInTDirection(double)));
    connect(ui.pqLDirectionUnitLineEdit, SIGNAL(modelValueChanged(double)), this, SLOT(slotRotateInLDirection(double)));
    connect(ui.keepTandLCheckBox, SIGNAL(toggled(bool)), this, SLOT(enableTandLeditBoxes()));
    for (QUnitLineEdit* e : {ui.m_pqVertiMinAxis, ui.m_pqVertiMaxAxis, ui.m_pqHoriMinAxis, ui.m_pqHoriMaxAxis})
        connect(e, SIGNAL(modelValueChanged(double)), this, SLOT(slotUpdateChartBoundaries()));
    connect(ui.m_pqZoomCheckBox, SIGNAL(toggled(bool)), this, SLOT(slotZoomFactorReset(bool)));
    connect(ui.m_pqZoomFactorSpinBox, SIGNAL(valueChanged(double)), this, SLOT(slotZoomFactorChanged(double)));
    connect(ui.verticalScrollBar, SIGNAL(valueChanged(int)), this, SLOT(slotVerticalSliderChanged(int)));
    connect(ui.m_pqWhiteBackgroundBtn, SIGNAL(toggled(bool)), this, SLOT(blackWhiteSwitch()));
    connect(ui.m_pqFontSizeSpinBox, SIGNAL(valueChanged(double)), this, SLOT(fontSizeChanged(double)));
    connect(ui.resetAnnotationBtn, SIGNAL(clicked()), this, SLOT(slotResetAnnotationSettings()));
    for (QRadioButton* r : {ui.CreateNoneRadioButton, ui.CrestalPlaneRadioButton, ui.AxialPlaneRadioButton,
                            ui.InflectionPlaneRadioButton, ui.HorizonRadioButton, ui.FaultRadioButton})
        connect(r, SIGNAL(toggled(bool)), this, SLOT(setDataCreationType()));
    connect(ui.newScenarioBtn, SIGNAL(clicked()), this, SLOT(slotNewScenario()));
    connect(ui.importScenarioBtn, SIGNAL(clicked()), this, SLOT(slotOpenScenario()));
    connect(ui.saveScenarioBtn, SIGNAL(clicked()), this, SLOT(slotSaveScenario()));
    connect(ui.closeScenarioBtn, SIGNAL(clicked()), this, SLOT(slotCloseScenario()));
    connect(ui.selectScenarioComboBox, SIGNAL(activated(int)), this, SLOT(slotSelectScenario(int)));
    connect(ui.createWellMarkersBtn, SIGNAL(clicked()), this, SIGNAL(createWellMarkers()));
    connect(ui.deleteWellMarkersBtn, SIGNAL(clicked()), this, SIGNAL(deleteWellMarkers()));
    connect(ui.createSectionBtn, SIGNAL(clicked()), this, SLOT(slotCreateSection()));
    ui.closeScenarioBtn->setEnabled(ui.selectScenarioComboBox->count() > 0);
    enableTandLeditBoxes();
    blackWhiteSwitch();
}

QScatDepthPlotWidget::~QScatDepthPlotWidget()
{
    // The charts read their models while they go: take them down first.
    for (TrackParts& t : m_tracks) {
        delete t.plot;
        t.plot = nullptr;
    }
    delete transverseDipData;
    delete longitudinalDipData;
    delete wrappedAzimuthData;
}

void QScatDepthPlotWidget::createPlot(Track track, QFrame* frame, QCartesianAxisWidget* top,
                                      QCartesianAxisWidget* bottom, const QString& settingsName)
{
    TrackParts& t = m_tracks[track];
    t.frame = frame;
    t.top = top;
    t.bottom = bottom;
    t.settingsName = settingsName;
    frame->setBackgroundRole(QPalette::ColorRole(9));
    top->setAxisPosition(QCartesianAxisWidget::AxisTop);
    bottom->setAxisPosition(QCartesianAxisWidget::AxisBottom);
    top->setUnitLabelVisible(false);
    bottom->setUnitLabelVisible(false);
    top->setTitleVisible(false);
    bottom->setTitleVisible(false);
    top->setFixedHeight(34);
    bottom->setFixedHeight(34);
    top->setMinimumWidth(0);
    bottom->setMinimumWidth(0);
    // A track is a quarter of the window: two points smaller let its scale show a label every
    // 90 or 100 degrees instead of one alone.
    for (QCartesianAxisWidget* a : {top, bottom})
        a->setFontPointSize(std::max(6.0, font().pointSizeF() - 2.0));
    t.plot = new QCrossPlot(frame, m_pqUi->pqAxisLeft);
    t.plot->setObjectName(settingsName);
    t.model = new QRelationshipItemModel(this);
    t.model->setObjectName(settingsName + QStringLiteral("_model"));
    t.model->setDataRoot(dataRoot);
    // SCAT rows are what this window is about: they are never left out of its tracks.
    t.model->takeSCATData(true);
    setupPlot(track);
    connect(t.plot, &QCrossPlot::dataPointsSelection, this,
            [this, track](const boost::dynamic_bitset<>& bits) { updateSelectionFromPlot(track, bits); });
    connect(t.plot, &QCrossPlot::cursorPos, this, [this, track](const QPointF& p, bool) { updateCursorPosLabel(track, p); });
    connect(t.plot, &QCrossPlot::cursorPos, this, [this, track](const QPointF&, bool) { updateCursorPosFromPlot(track); });
    t.colours = new QLegendListModel(this, t.plot, QLegendListModel::ColorLegend);
    t.symbols = new QLegendListModel(this, t.plot, QLegendListModel::SymbolLegend);
}

void QScatDepthPlotWidget::setupPlot(Track track)
{
    TrackParts& t = m_tracks[track];
    QCrossPlot* plot = t.plot;
    plot->setScatContextMenu();
    connect(plot, &QCrossPlot::sendInsertScatUpdate, this, &QScatDepthPlotWidget::slotInsertScatUpdate);
    connect(plot, &QCrossPlot::sendScatPickPos, this, &QScatDepthPlotWidget::slotPickPosUpdate);
    connect(plot, &QCrossPlot::sendMoveSelectedUpdate, this, &QScatDepthPlotWidget::slotMoveSelectedUpdate);
    connect(plot, &QCrossPlot::sendMoveSelectedUpdateStop, this, &QScatDepthPlotWidget::slotMoveSelectedUpdateStop);
    connect(plot, &QCrossPlot::selectedObjectNameRequired, this, &QScatDepthPlotWidget::onSelectedObjectNameRequired);
    connect(plot, &QCrossPlot::selectedObjectColourRequired, this, &QScatDepthPlotWidget::onSelectedObjectColourRequired);
    connect(plot, QOverload<const QColor&>::of(&QCrossPlot::sendScatUpdate), this,
            QOverload<const QColor&>::of(&QScatDepthPlotWidget::slotSendScatUpdate));
    connect(plot, QOverload<const QString&>::of(&QCrossPlot::sendScatUpdate), this,
            QOverload<const QString&>::of(&QScatDepthPlotWidget::slotSendScatUpdate));
    connect(plot, &QCrossPlot::sendDeleteSelectedUpdate, this, &QScatDepthPlotWidget::slotDeleteSelected);
    connect(plot, &QCrossPlot::sendModifySelectedOrientation, this, &QScatDepthPlotWidget::slotModifySelectedOrientation);
    connect(plot, &QCrossPlot::crossPlotLeaveEvent, this, &QScatDepthPlotWidget::slotCrossPlotLeaveEvent);
    connect(plot, &QCrossPlot::signalCopyWEMFToClipboard, this, &QScatDepthPlotWidget::copyToClipboard);
    plot->setModel(t.model);
    plot->showActivePlotWindow(true);
    plot->showModifyAction(false);
    plot->enableMouseZoom(false);
    plot->setGridIsOn(true);
    plot->setPointFillColor(QColor(0, 0, 255));
    plot->setLineColor(QColor(0, 0, 255));
    auto* layout = new QHBoxLayout(t.frame);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(plot);
    connect(m_pqUi->pqAxisLeft, SIGNAL(gridLinesChanged(QList<int>)), plot, SLOT(horizontalGridLinesChanged(QList<int>)));
    // Each track has its own horizontal scale: its grid follows its own top axis.
    connect(t.top, SIGNAL(gridLinesChanged(QList<int>)), plot, SLOT(verticalGridLinesChanged(QList<int>)));
    plot->initializePointSytleComboBox(m_pqUi->m_pqPointStyleComboBox, true);
}

QList<QCartesianAxisWidget*> QScatDepthPlotWidget::allAxes() const
{
    QList<QCartesianAxisWidget*> axes{m_pqUi->pqAxisLeft};
    for (const TrackParts& t : m_tracks)
        axes << t.top << t.bottom;
    return axes;
}

// ---- data ----

void QScatDepthPlotWidget::setDataRoot(MatrixData* root)
{
    dataRoot = root;
    for (TrackParts& t : m_tracks)
        t.model->setDataRoot(root);
}

MatrixData* QScatDepthPlotWidget::findColumn(const QString& name) const
{
    return PanelComboBoxes::findColumn(dataRoot, name);
}

void QScatDepthPlotWidget::setDataSet(MatrixData* dip, MatrixData* azimuth, MatrixData* depth, MatrixData* colours,
                                      MatrixData* symbols, const std::vector<int>& rows)
{
    initializeDataSet(dip, azimuth, depth, colours, symbols);
    // The previous rows decide: a window that showed everything starts on the first display
    // entry, one that showed a part goes back to every row of it.
    if (selectedRows.empty())
        m_pqUi->displayDataTypeComboBox->setCurrentIndex(0);
    else {
        const QSignalBlocker blocker(m_pqUi->m_pqVertexFilterSpinBox);
        m_pqUi->m_pqVertexFilterSpinBox->setValue(1);
    }
    selectedRows = rows;
    updateDiagrams(true);
    updateToolboxSettings(AzimuthTrack);
}

void QScatDepthPlotWidget::initializeDataSet(MatrixData* dip, MatrixData* azimuth, MatrixData* depth,
                                             MatrixData* colours, MatrixData* symbols)
{
    delete transverseDipData;
    delete longitudinalDipData;
    delete wrappedAzimuthData;
    transverseDipData = longitudinalDipData = wrappedAzimuthData = nullptr;
    dipData = azimuthData = depthData = colourData = symbolData = nullptr;
    if (!dip || !azimuth || !depth)
        return;
    dipData = dip;
    azimuthData = azimuth;
    depthData = depth;
    colourData = colours;
    symbolData = symbols;
    for (TrackParts& t : m_tracks) {
        t.colours->setSymbolNode(colours);
        t.symbols->setSymbolNode(symbols);
    }
    Ui::QScatDepthPlotWidget& ui = *m_pqUi;
    for (QUnitLineEdit* e : {ui.m_pqVertiMinAxis, ui.m_pqVertiMaxAxis})
        e->setUnitManager(depth->unitManager());
    ui.pqAxisLeft->setUnitManager(depth->unitManager());
    for (QUnitLineEdit* e : {ui.m_pqHoriMinAxis, ui.m_pqHoriMaxAxis, ui.pqTDirectionUnitLineEdit, ui.pqLDirectionUnitLineEdit})
        e->setUnitManager(dip->unitManager());
    for (TrackParts& t : m_tracks) {
        t.top->setUnitManager(dip->unitManager());
        t.bottom->setUnitManager(dip->unitManager());
    }
    rotateDipData(QStringLiteral("Transverse Dip"), transverseDipData, ui.pqTDirectionUnitLineEdit->modelValue());
    rotateDipData(QStringLiteral("Longitudinal Dip"), longitudinalDipData, ui.pqLDirectionUnitLineEdit->modelValue());
    wrapAzimuths();
}

void QScatDepthPlotWidget::rotateDipData(const QString& name, MatrixData*& target, double direction)
{
    if (!dipData)
        return;
    const int rows = dipData->rowCount();
    if (target && target->rowCount() != rows) {
        delete target;
        target = nullptr;
    }
    if (!target) {
        target = new MatrixData(name, rows, 1, QVariant::Double);
        target->setRegistry(dipData->registry());
        target->setUnitManager(dipData->unitManager());
    }
    PanelLoadStamp stamp;
    stamp.addColumn(dipData).addColumn(azimuthData).add(rows);
    if (stamp != m_rotationStamp) {
        const ColumnReader dip(dipData);
        const ColumnReader azimuth(azimuthData);
        m_rotationAzimuths.assign(std::size_t(rows), 0.0);
        m_rotationTanDips.assign(std::size_t(rows), 0.0);
        m_rotationValid.assign(std::size_t(rows), 0);
        for (int r = 0; r < rows; ++r) {
            double d = 0.0, a = 0.0;
            if (!dip.read(r, d) || !azimuth.read(r, a))
                continue;
            m_rotationAzimuths[r] = a;
            m_rotationTanDips[r] = std::tan(d * kPi / 180.0);
            m_rotationValid[r] = 1;
        }
        m_rotationStamp = stamp;
    }
    // The same expression, in the same order, as atan(cos((T - a) pi / 180) tan(d pi / 180)):
    // only the tangent is taken from the cache.
    for (int r = 0; r < rows; ++r) {
        if (!m_rotationValid[r])
            target->setValue(r, 0, QVariant());
        else
            target->setDoubleValue(
                r, 0, std::atan(std::cos((direction - m_rotationAzimuths[r]) * kPi / 180.0) * m_rotationTanDips[r]) * kDegrees);
    }
    target->checkValidRowCount();
}

void QScatDepthPlotWidget::wrapAzimuths()
{
    if (!mercatorScaling || !azimuthData)
        return;
    const int rows = azimuthData->rowCount();
    wrappedAzimuthData = new MatrixData(azimuthData->name(), rows, 1, QVariant::Double);
    wrappedAzimuthData->setRegistry(azimuthData->registry());
    wrappedAzimuthData->setUnitManager(azimuthData->unitManager());
    const ColumnReader azimuth(azimuthData);
    for (int r = 0; r < rows; ++r) {
        double a = 0.0;
        if (!azimuth.read(r, a))
            continue;
        a = std::fmod(a, 360.0);
        if (a < 0.0)
            a += 360.0;
        wrappedAzimuthData->setDoubleValue(r, 0, a > 180.0 ? a - 360.0 : a);
    }
    wrappedAzimuthData->checkValidRowCount();
}

MatrixData* QScatDepthPlotWidget::trackData(Track track) const
{
    switch (track) {
    case AzimuthTrack:
        return wrappedAzimuthData ? wrappedAzimuthData : azimuthData;
    case DipTrack:
        return dipData;
    case TransverseDipTrack:
        return transverseDipData;
    case LongitudinalDipTrack:
        return longitudinalDipData;
    }
    return nullptr;
}

void QScatDepthPlotWidget::setMercatorScaling(bool on)
{
    if (on == mercatorScaling)
        return;
    mercatorScaling = on;
    delete wrappedAzimuthData;
    wrappedAzimuthData = nullptr;
    wrapAzimuths();
    if (depthData)
        updateDiagrams(true);
}

void QScatDepthPlotWidget::slotRotateInTDirection(double direction)
{
    rotateDipData(QStringLiteral("Transverse Dip"), transverseDipData, direction);
    showTandLdirection();
    updateDiagram(TransverseDipTrack);
    plot(TransverseDipTrack)->updateChart();
}

void QScatDepthPlotWidget::slotRotateInLDirection(double direction)
{
    rotateDipData(QStringLiteral("Longitudinal Dip"), longitudinalDipData, direction);
    showTandLdirection();
    updateDiagram(LongitudinalDipTrack);
    plot(LongitudinalDipTrack)->updateChart();
}

void QScatDepthPlotWidget::showTandLdirection()
{
    // Only the azimuth track has directions on its horizontal axis; the others mark none (-1).
    auto shown = [this](double d) {
        if (!std::isfinite(d))
            return -1.0;
        d = std::fmod(d, 360.0);
        if (d < 0.0)
            d += 360.0;
        return mercatorScaling && d > 180.0 ? d - 360.0 : d;
    };
    // A pair never set (both 0) marks nothing either.
    const bool unset = tDirection() == 0.0 && lDirection() == 0.0;
    plot(AzimuthTrack)->setTandLdirection(unset ? -1.0 : shown(tDirection()), unset ? -1.0 : shown(lDirection()));
    plot(AzimuthTrack)->update();
}

double QScatDepthPlotWidget::tDirection() const { return m_pqUi->pqTDirectionUnitLineEdit->modelValue(); }
double QScatDepthPlotWidget::lDirection() const { return m_pqUi->pqLDirectionUnitLineEdit->modelValue(); }

void QScatDepthPlotWidget::updateTandLdirection(double t, double l)
{
    Ui::QScatDepthPlotWidget& ui = *m_pqUi;
    const bool unset = ui.pqTDirectionUnitLineEdit->modelValue() == 0.0 && ui.pqLDirectionUnitLineEdit->modelValue() == 0.0;
    if (!unset && ui.keepTandLCheckBox->isChecked())
        return;
    ui.pqTDirectionUnitLineEdit->setModelValue(t);
    ui.pqLDirectionUnitLineEdit->setModelValue(l);
}

void QScatDepthPlotWidget::enableTandLeditBoxes()
{
    const bool on = m_pqUi->keepTandLCheckBox->isChecked();
    m_pqUi->pqTDirectionUnitLineEdit->setEnabled(on);
    m_pqUi->pqLDirectionUnitLineEdit->setEnabled(on);
}

void QScatDepthPlotWidget::updateDiagram(Track track)
{
    MatrixData* x = trackData(track);
    if (!x || !depthData)
        return;
    TrackParts& t = m_tracks[track];
    bool ok = false;
    const int sampling = m_pqUi->m_pqVertexFilterSpinBox->text().toInt(&ok);
    const auto type = DisplayType(m_pqUi->displayDataTypeComboBox->currentData().toInt());
    QMap<int, QVariant> colorNames, symbolNames;
    QMap<int, QColor> colorColors, symbolColors;
    const bool colourOn = m_pqUi->m_pqColorAttributeComboBox->currentText() != PanelComboBoxes::noneText()
                          && !m_pqUi->m_pqColorAttributeComboBox->currentText().isEmpty();
    const bool symbolOn = m_pqUi->m_pqSymbolAttributeComboBox->currentText() != PanelComboBoxes::noneText()
                          && !m_pqUi->m_pqSymbolAttributeComboBox->currentText().isEmpty();
    t.model->takeNewDataSet(ok && sampling >= 1 ? sampling : 1, type, x, depthData, colourOn ? colourData : nullptr,
                            symbolOn ? symbolData : nullptr, false, selectedRows, colorNames, colorColors, symbolNames,
                            symbolColors);
    t.colours->setClasses(colorNames, colorColors);
    t.symbols->setClasses(symbolNames, symbolColors);
}

void QScatDepthPlotWidget::updateDiagrams(bool resetAxes)
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    for (int i = 0; i < kTrackCount; ++i)
        updateDiagram(Track(i));
    if (depthData)
        m_pqUi->pqAxisLeft->setTitle(depthData->name());
    if (resetAxes) {
        setDefaultDataBoundaries();
        invertDepthAxis();
        axisRedraw();
    }
    const bool zoom = m_pqUi->m_pqZoomCheckBox->isChecked();
    m_pqUi->m_pqZoomFactorSpinBox->setEnabled(zoom);
    slotZoomFactorChanged(zoom ? m_pqUi->m_pqZoomFactorSpinBox->value() : 1.0);
    showTandLdirection();
    updateDiagramSettings();
    QGuiApplication::restoreOverrideCursor();
}

void QScatDepthPlotWidget::slotUpdateDiagrams()
{
    if (depthData)
        updateDiagrams(true);
}

void QScatDepthPlotWidget::updateDataBoundaries(Track track, double& depthMin, double& depthMax)
{
    TrackParts& t = m_tracks[track];
    if (!t.model->data() || t.model->pointCount() == 0)
        return;
    QPointF lo = t.model->minValue();
    QPointF hi = t.model->maxValue();
    if (lo.y() == -1.0)
        lo.setY(defaultYAxisRange.x());
    if (hi.y() == 1.0)
        hi.setY(defaultYAxisRange.y());
    double x0 = lo.x(), x1 = hi.x();
    usableRange(x0, x1);
    t.top->setRange(x0, x1);
    t.top->fitNiceRange();
    t.bottom->setRange(t.top->minimum(), t.top->maximum());
    if (std::isfinite(lo.y()))
        depthMin = std::min(depthMin, lo.y());
    if (std::isfinite(hi.y()))
        depthMax = std::max(depthMax, hi.y());
    if (t.model->hasStructuralTopsScenarios()) {
        if (DepthLineField* f = t.model->structuralTops()) {
            std::vector<double> depths = f->lineDepths();
            std::sort(depths.begin(), depths.end());
            if (!depths.empty()) {
                depthMin = std::min(depthMin, depths.front());
                depthMax = std::max(depthMax, depths.back());
            }
        }
    }
}

void QScatDepthPlotWidget::setDefaultDataBoundaries()
{
    double lo = 1e27, hi = -1e27;
    for (int i = 0; i < kTrackCount; ++i)
        updateDataBoundaries(Track(i), lo, hi);
    usableRange(lo, hi);
    Ui::QScatDepthPlotWidget& ui = *m_pqUi;
    ui.pqAxisLeft->setRange(lo, hi);
    ui.pqAxisLeft->fitNiceRange();
    double y0 = ui.pqAxisLeft->minimum(), y1 = ui.pqAxisLeft->maximum();
    usableRange(y0, y1);
    {
        const QSignalBlocker a(ui.m_pqVertiMinAxis), b(ui.m_pqVertiMaxAxis);
        ui.m_pqVertiMinAxis->setModelValue(y0, false);
        ui.m_pqVertiMaxAxis->setModelValue(y1, false);
    }
    const std::array<QPointF, kTrackCount> ranges{
        {mercatorScaling ? QPointF(-180.0, 180.0) : QPointF(0.0, 360.0), QPointF(0.0, 90.0), QPointF(-90.0, 90.0),
         QPointF(-90.0, 90.0)}};
    for (int i = 0; i < kTrackCount; ++i) {
        TrackParts& t = m_tracks[i];
        t.top->setRange(ranges[i].x(), ranges[i].y());
        t.bottom->setRange(ranges[i].x(), ranges[i].y());
        t.plot->setBoundaries(QPointF(ranges[i].x(), y0), QPointF(ranges[i].y(), y1));
    }
    const QSignalBlocker a(ui.m_pqHoriMinAxis), b(ui.m_pqHoriMaxAxis);
    ui.m_pqHoriMinAxis->setModelValue(ranges[AzimuthTrack].x(), false);
    ui.m_pqHoriMaxAxis->setModelValue(ranges[AzimuthTrack].y(), false);
}

void QScatDepthPlotWidget::invertDepthAxis()
{
    bool a = false, b = false;
    double lo = 0.0, hi = 0.0;
    if (depthData) {
        lo = depthData->minValue().toDouble(&a);
        hi = depthData->maxValue().toDouble(&b);
    }
    bool elevation = (a && lo < 0.0) || (b && hi < 0.0);
    // A column whose summary was never computed tells nothing: the depths the tracks loaded do.
    if (!a && !b)
        for (const TrackParts& t : m_tracks)
            if (t.model->data() && t.model->pointCount() > 0)
                elevation = elevation || t.model->minValue().y() < 0.0 || t.model->maxValue().y() < 0.0;
    QCartesianAxisWidget* left = m_pqUi->pqAxisLeft;
    left->setAxisPosition(elevation ? QCartesianAxisWidget::AxisLeftElevation : QCartesianAxisWidget::AxisLeftDepth);
    left->setOriginPosition(elevation ? QCartesianAxisWidget::OriginBottomLeft : QCartesianAxisWidget::OriginTopLeft);
    for (TrackParts& t : m_tracks)
        t.plot->setOriginPosition(elevation ? QCrossPlot::OriginBottomLeft : QCrossPlot::OriginTopLeft);
}

void QScatDepthPlotWidget::slotUpdateChartBoundaries()
{
    Ui::QScatDepthPlotWidget& ui = *m_pqUi;
    auto cut = [](double v) { return static_cast<double>(static_cast<float>(v)); };
    double y0 = cut(ui.m_pqVertiMinAxis->modelValue()), y1 = cut(ui.m_pqVertiMaxAxis->modelValue());
    double x0 = cut(ui.m_pqHoriMinAxis->modelValue()), x1 = cut(ui.m_pqHoriMaxAxis->modelValue());
    if (y0 > y1)
        std::swap(y0, y1);
    if (x0 > x1)
        std::swap(x0, x1);
    usableRange(y0, y1);
    usableRange(x0, x1);
    ui.pqAxisLeft->setRange(y0, y1);
    for (TrackParts& t : m_tracks) {
        t.plot->setYBoundary(y0, y1);
        if (t.plot->activeWindow()) {
            t.plot->setXBoundary(x0, x1);
            t.top->setRange(x0, x1);
            t.bottom->setRange(x0, x1);
        }
    }
    axisRedraw();
    updateCharts();
}

void QScatDepthPlotWidget::slotZoomFactorReset(bool on)
{
    m_pqUi->m_pqZoomFactorSpinBox->setEnabled(on);
    slotZoomFactorChanged(on ? m_pqUi->m_pqZoomFactorSpinBox->value() : 1.0);
}

void QScatDepthPlotWidget::slotZoomFactorChanged(double zoom)
{
    if (!m_pqUi->m_pqZoomCheckBox->isChecked())
        zoom = 1.0;
    applyZoom(zoom);
}

void QScatDepthPlotWidget::applyZoom(double zoom)
{
    if (!std::isfinite(zoom) || zoom < 1.0)
        zoom = 1.0;
    QScrollBar* bar = m_pqUi->verticalScrollBar;
    PanelZoomScrollBars(nullptr, bar).apply(zoom, true);
    m_pqUi->pqAxisLeft->setZoom(zoom);
    for (TrackParts& t : m_tracks)
        t.plot->zoomY(zoom);
    slotVerticalSliderChanged(bar->value());
}

void QScatDepthPlotWidget::slotVerticalSliderChanged(int value)
{
    for (TrackParts& t : m_tracks)
        t.plot->yoffset(value);
    // The axis counts from its origin's side, as the depth panel's axes do.
    QCartesianAxisWidget* left = m_pqUi->pqAxisLeft;
    left->setOffset(left->originPosition() == QCartesianAxisWidget::OriginBottomLeft ? 100 - value : value);
}

// ---- cursor ----

void QScatDepthPlotWidget::updateCursorPosFromPlot(Track source)
{
    const double y = plot(source)->mousePickingPos().y();
    for (int i = 0; i < kTrackCount; ++i) {
        if (i == source)
            continue;
        // x = 0 leaves out the vertical hair: only the track under the mouse has one.
        m_tracks[i].plot->setMousePickingPos(QPointF(0.0, y));
        m_tracks[i].plot->update();
    }
}

void QScatDepthPlotWidget::slotCrossPlotLeaveEvent()
{
    for (TrackParts& t : m_tracks) {
        t.plot->setMousePickingPos(QPointF(QCrossPlot::kNoValue, 0.0));
        t.plot->update();
    }
}

void QScatDepthPlotWidget::updateCursorPosLabel(Track track, const QPointF& p)
{
    MatrixData* xNode = track == AzimuthTrack ? azimuthData : trackData(track);
    if (!xNode || !depthData || p.x() == QCrossPlot::kNoValue)
        return;
    auto shown = [](const MatrixData* node, double v, QString& unit) {
        const boost::shared_ptr<UnitManager> m = node->unitManager();
        unit = m ? m->getDisplayUnitTag() : QString();
        return m ? m->convertModelToDisplay(v) : v;
    };
    QString xUnit, yUnit;
    double x = shown(xNode, p.x(), xUnit);
    const double y = shown(depthData, p.y(), yUnit);
    if (track == AzimuthTrack && x < 0.0)
        x += 360.0;
    m_pqUi->cursorPosLabel->setText(QStringLiteral("(") + xNode->name() + QStringLiteral(", ") + depthData->name()
                                    + QStringLiteral("):"));
    m_pqUi->cursorPosValue->setText(QStringLiteral("(") + QString::number(x, 'f', 2) + QLatin1Char(' ') + xUnit
                                    + QStringLiteral(", ") + QString::number(y, 'f', 2) + QLatin1Char(' ') + yUnit
                                    + QStringLiteral(")"));
}

// ---- selection and the active track ----

void QScatDepthPlotWidget::updateSelectionFromPlot(Track track, const boost::dynamic_bitset<>& bits)
{
    if (!(QGuiApplication::keyboardModifiers() & Qt::ControlModifier))
        for (int i = 0; i < kTrackCount; ++i)
            if (i != track)
                m_tracks[i].plot->setActivePlotWindow(false);
    if (!plot(track)->modifyOrientation())
        deselectAllStructuralTops();
    updateToolboxSettings(track);
    slotUpdateSelection(bits);
}

void QScatDepthPlotWidget::slotUpdateSelection(const boost::dynamic_bitset<>& bits)
{
    selectedRows.clear();
    for (auto r = bits.find_first(); r != boost::dynamic_bitset<>::npos; r = bits.find_next(r))
        selectedRows.push_back(int(r));
    if (selectedRows.empty()) {
        const QSignalBlocker blocker(m_pqUi->displayDataTypeComboBox);
        m_pqUi->displayDataTypeComboBox->setCurrentIndex(0);
    }
    emit dataPointsSelection(bits);
}

void QScatDepthPlotWidget::updateSelection(const std::vector<int>& rows)
{
    selectedRows = rows;
    rotateDipData(QStringLiteral("Transverse Dip"), transverseDipData, tDirection());
    rotateDipData(QStringLiteral("Longitudinal Dip"), longitudinalDipData, lDirection());
    updateDiagrams(false);
}

void QScatDepthPlotWidget::updateToolboxSettings(Track track)
{
    Ui::QScatDepthPlotWidget& ui = *m_pqUi;
    TrackParts& t = m_tracks[track];
    const QSignalBlocker blockers[] = {QSignalBlocker(ui.m_pqShowGrid), QSignalBlocker(ui.m_pqShowPointConnectionLine),
                                       QSignalBlocker(ui.m_pqShowPoints), QSignalBlocker(ui.m_pqLinePixelSizeSpinBox),
                                       QSignalBlocker(ui.m_pqPixelSizeSpinBox), QSignalBlocker(ui.m_pqPointStyleComboBox),
                                       QSignalBlocker(ui.showHorizons), QSignalBlocker(ui.showFaults),
                                       QSignalBlocker(ui.showAverageOrientations), QSignalBlocker(ui.showStructuralPlanes),
                                       QSignalBlocker(ui.showHorizonLabels), QSignalBlocker(ui.showFaultLabels),
                                       QSignalBlocker(ui.showAverageOrientationLabels),
                                       QSignalBlocker(ui.showStructuralPlaneLabels), QSignalBlocker(ui.domainTypeComboBox)};
    ui.m_pqShowGrid->setChecked(t.plot->gridIsOn());
    ui.m_pqShowPointConnectionLine->setChecked(t.plot->pointConnectionLineIsOn());
    ui.m_pqLinePixelSizeSpinBox->setValue(t.plot->linePixelSize());
    ui.m_pqShowPoints->setChecked(t.plot->showPoints());
    ui.m_pqPixelSizeSpinBox->setValue(t.model->pointPixelSize());
    const int style = ui.m_pqPointStyleComboBox->findData(int(t.model->pointStyle()));
    if (style >= 0)
        ui.m_pqPointStyleComboBox->setCurrentIndex(style);
    PanelColorButton::setColor(ui.pointColorButton, t.plot->pointFillColor());
    PanelColorButton::setColor(ui.lineColorButton, t.plot->lineColor());
    if (DepthLineField* f = t.model->structuralTops()) {
        ui.showHorizons->setChecked(f->showHorizons());
        ui.showFaults->setChecked(f->showFaults());
        ui.showAverageOrientations->setChecked(f->showAverageOrientations());
        ui.showStructuralPlanes->setChecked(f->showStructuralPlanes());
        ui.showHorizonLabels->setChecked(f->showHorizonLabels());
        ui.showFaultLabels->setChecked(f->showFaultLabels());
        ui.showAverageOrientationLabels->setChecked(f->showAverageOrientationLabels());
        ui.showStructuralPlaneLabels->setChecked(f->showStructuralPlaneLabels());
        ui.domainTypeComboBox->setCurrentIndex(std::clamp(int(f->domainType()), 0, 2));
    }
}

std::vector<QScatDepthPlotWidget::Track> QScatDepthPlotWidget::activeOrAllTracks() const
{
    std::vector<Track> active;
    for (int i = 0; i < kTrackCount; ++i)
        if (m_tracks[i].plot->activeWindow())
            active.push_back(Track(i));
    if (active.empty())
        for (int i = 0; i < kTrackCount; ++i)
            active.push_back(Track(i));
    return active;
}

void QScatDepthPlotWidget::updateDiagramSettings()
{
    Ui::QScatDepthPlotWidget& ui = *m_pqUi;
    bool ok = false;
    const int style = ui.m_pqPointStyleComboBox->currentData().toInt(&ok);
    for (TrackParts& t : m_tracks) {
        if (!t.plot->activeWindow())
            continue;
        t.plot->setGridIsOn(ui.m_pqShowGrid->isChecked());
        t.plot->setPointConnectionLine(ui.m_pqShowPointConnectionLine->isChecked());
        t.plot->setShowPoints(ui.m_pqShowPoints->isChecked());
        t.plot->setLinePixelSize(ui.m_pqLinePixelSizeSpinBox->value());
        t.model->setPointPixelSize(ui.m_pqPixelSizeSpinBox->value());
        if (ok && style >= QRelationshipItemModel::Circle && style <= QRelationshipItemModel::BigCross4)
            t.model->setPointStyle(static_cast<QRelationshipItemModel::PointStyle>(style));
        if (DepthLineField* f = t.model->structuralTops()) {
            f->setShowHorizons(ui.showHorizons->isChecked());
            f->setShowFaults(ui.showFaults->isChecked());
            f->setShowAverageOrientations(ui.showAverageOrientations->isChecked());
            f->setShowStructuralPlanes(ui.showStructuralPlanes->isChecked());
            f->setShowHorizonLables(ui.showHorizonLabels->isChecked());
            f->setShowFaultLabels(ui.showFaultLabels->isChecked());
            f->setShowAverageOrientationLabels(ui.showAverageOrientationLabels->isChecked());
            f->setShowStructuralPlaneLabels(ui.showStructuralPlaneLabels->isChecked());
            f->setDomainType(DepthLineField::DomainType(std::clamp(ui.domainTypeComboBox->currentIndex(), 0, 2)));
        }
    }
    // The regression aids of the cross plot mean nothing along a well.
    for (TrackParts& t : m_tracks) {
        t.plot->setShow90PercentRange(false);
        t.plot->setShowRegressionLine(false);
    }
    updateCharts();
}

void QScatDepthPlotWidget::applyFormToNewScenario()
{
    Ui::QScatDepthPlotWidget& ui = *m_pqUi;
    for (TrackParts& t : m_tracks) {
        DepthLineField* f = t.model->structuralTops();
        if (!f)
            continue;
        // The names are written once, in the azimuth track, where they cover least: four copies
        // of every label hide the low dips of the other tracks. Each track can show them again.
        const bool labels = &t == &m_tracks[AzimuthTrack];
        f->setShowHorizons(ui.showHorizons->isChecked());
        f->setShowFaults(ui.showFaults->isChecked());
        f->setShowAverageOrientations(ui.showAverageOrientations->isChecked());
        f->setShowStructuralPlanes(ui.showStructuralPlanes->isChecked());
        f->setShowHorizonLables(labels && ui.showHorizonLabels->isChecked());
        f->setShowFaultLabels(labels && ui.showFaultLabels->isChecked());
        f->setShowAverageOrientationLabels(labels && ui.showAverageOrientationLabels->isChecked());
        f->setShowStructuralPlaneLabels(labels && ui.showStructuralPlaneLabels->isChecked());
        f->setDomainType(DepthLineField::DomainType(std::clamp(ui.domainTypeComboBox->currentIndex(), 0, 2)));
        f->setDomainTransparency(int(ui.TransparencySpinBoxWithSlider->value() * 2.55));
    }
}

void QScatDepthPlotWidget::slotDomainTransparency(int percent)
{
    const int alpha = int(percent * 2.55);
    for (TrackParts& t : m_tracks) {
        if (!t.plot->activeWindow())
            continue;
        if (DepthLineField* f = t.model->structuralTops())
            f->setDomainTransparency(alpha);
        t.plot->updateChart();
    }
}

void QScatDepthPlotWidget::slotUpdateChartData()
{
    Ui::QScatDepthPlotWidget& ui = *m_pqUi;
    MatrixData* tadpole = findColumn(ui.tadpoleAttributeComboBox->currentText());
    MatrixData* colours = findColumn(ui.m_pqColorAttributeComboBox->currentText());
    MatrixData* symbols = findColumn(ui.m_pqSymbolAttributeComboBox->currentText());
    colourData = colours;
    symbolData = symbols;
    for (Track track : activeOrAllTracks()) {
        TrackParts& t = m_tracks[track];
        t.model->setTadPoleAzimuthDataNode(tadpole);
        t.colours->setSymbolNode(colours);
        t.symbols->setSymbolNode(symbols);
        updateDiagram(track);
        t.plot->updateChart();
    }
    ui.colorLegendFrame->setVisible(colours != nullptr);
    ui.symbolLegendFrame->setVisible(symbols != nullptr);
    ui.legendSplitter->setVisible(colours || symbols);
}

void QScatDepthPlotWidget::updateDisplayDataType(int index)
{
    const auto now = DisplayType(m_pqUi->displayDataTypeComboBox->itemData(index).toInt());
    const auto before = azimuthItemModel()->displayType();
    if (now == before)
        return;
    const bool noNewData = (now == QRelationshipItemModel::ShowAll && before == QRelationshipItemModel::HighlightSelected)
                           || (now == QRelationshipItemModel::HighlightSelected && before == QRelationshipItemModel::ShowAll);
    if (noNewData) {
        for (TrackParts& t : m_tracks) {
            t.model->setDisplayType(now);
            t.plot->updateChart();
        }
        return;
    }
    emit dataPointsSelection(azimuthItemModel()->selection());
}

// ---- annotation ----

void QScatDepthPlotWidget::axisRedraw()
{
    for (QCartesianAxisWidget* a : allAxes())
        a->redraw();
}

void QScatDepthPlotWidget::fontSizeChanged(double points)
{
    for (QCartesianAxisWidget* a : allAxes())
        a->setFontPointSize(points);
    axisRedraw();
}

void QScatDepthPlotWidget::slotResetAnnotationSettings()
{
    m_pqUi->m_pqFontSizeSpinBox->setValue(font().pointSizeF());
    slotUpdateDiagrams();
}

void QScatDepthPlotWidget::blackWhiteSwitch()
{
    const bool black = m_pqUi->m_pqBlackBackgroundBtn->isChecked();
    const QPalette palette = PanelBackground::palette(black, m_pqUi->m_pqPlotFrame->palette());
    m_pqUi->m_pqPlotFrame->setPalette(palette);
    for (QCartesianAxisWidget* a : allAxes())
        a->setPalette(palette);
    for (TrackParts& t : m_tracks) {
        t.plot->setLabelColor(black ? Qt::white : Qt::black);
        t.plot->setBackgroundColor(black ? Qt::black : Qt::white);
        t.plot->scheduleRedraw();
    }
    axisRedraw();
}

void QScatDepthPlotWidget::changeLineColor()
{
    recolourActiveTracks(m_pqUi->lineColorButton, &QChartDrawingArea::setLineColor);
}

void QScatDepthPlotWidget::changePointColor()
{
    recolourActiveTracks(m_pqUi->pointColorButton, &QChartDrawingArea::setPointFillColor);
}

void QScatDepthPlotWidget::recolourActiveTracks(QPushButton* button, void (QChartDrawingArea::*set)(const QColor&))
{
    const QColor colour = PanelColorButton::pick(button, QColor(0, 0, 255));
    if (!colour.isValid())
        return;
    for (TrackParts& t : m_tracks)
        if (t.plot->activeWindow()) {
            (t.plot->*set)(colour);
            t.plot->updateChart();
        }
}

void QScatDepthPlotWidget::updateCharts()
{
    for (TrackParts& t : m_tracks)
        t.plot->updateChart();
}

// ---- selection boxes ----

void QScatDepthPlotWidget::updateDataSetSelectionBox(const QStringList& names, const QList<int>& ids)
{
    updateSymbolAttributeDataSetSelectionBox(names, ids);
    updateColorAttributeDataSetSelectionBox(names, ids);
    updateTadPoleAttributeDataSetSelectionBox(names, ids);
}

void QScatDepthPlotWidget::updateSymbolAttributeDataSetSelectionBox(const QStringList& names, const QList<int>& ids,
                                                                    int index)
{
    PanelComboBoxes::refillWithNone(m_pqUi->m_pqSymbolAttributeComboBox, names, ids, index);
}

void QScatDepthPlotWidget::updateColorAttributeDataSetSelectionBox(const QStringList& names, const QList<int>& ids,
                                                                   int index)
{
    PanelComboBoxes::refillWithNone(m_pqUi->m_pqColorAttributeComboBox, names, ids, index);
}

void QScatDepthPlotWidget::updateTadPoleAttributeDataSetSelectionBox(const QStringList& names, const QList<int>& ids)
{
    PanelComboBoxes::refillWithNone(m_pqUi->tadpoleAttributeComboBox, names, ids,
                                    m_pqUi->tadpoleAttributeComboBox->currentIndex());
}

void QScatDepthPlotWidget::setLimitYPickingToInPlots(const QPointF& limits)
{
    m_limitYPicking = limits;
    for (TrackParts& t : m_tracks)
        t.plot->setLimitYPickingToInPlots(limits);
}

} // namespace rkBase
