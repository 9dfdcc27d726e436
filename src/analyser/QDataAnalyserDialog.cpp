#include "QDataAnalyserDialog.h"

#include "TabWidgetWithFloatingTabs.h"
#include "WaitCursor.h"

#include <DisplayUnitManager.h>
#include <MatrixData.h>
#include <PanelSettings.h>
#include <QAttributeTreeView.h>
#include <QCrossPlotWidget.h>
#include <QDepthPlotWidget.h>
#include <QFinalPolish.h>
#include <QHistogramChartWidget.h>
#include <QRKEBarChartWidget.h>
#include <QRoseChartWidget.h>
#include <QStereoChartWidget.h>
#include <QTangentChartWidget.h>
#include <QSelectCellsDialog.h>
#include <QSortFilterProxyVertexItemModel.h>
#include <QTreeItemModel.h>
#include <QVertexItemModel.h>
#include <QVertexMinMaxItemModel.h>
#include <QVertexMinMaxModelTableView.h>
#include <QVertexModelTableView.h>
#include <UnitRegistry.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPixmap>
#include <QSettings>
#include <QSplitter>

#include <algorithm>

namespace rkBase {

QDataAnalyserDialog::QDataAnalyserDialog(QWidget* parent)
    : QWidget(parent), m_dataRoot(new MatrixData(QStringLiteral("Data Root"), -1, -1, QVariant::String, true)),
      m_settingsGroup(QStringLiteral("defaultSettingsGroup")), m_settingsMainGroup(QStringLiteral("attribute_analyser"))
{
    setFocusPolicy(Qt::ClickFocus);
    MatrixData::resetGlobalIDCounter();
    std::fill(std::begin(m_chartsUpdateNeeded), std::end(m_chartsUpdateNeeded), true);
}

QDataAnalyserDialog::~QDataAnalyserDialog()
{
    // Views read the tree while they go; take it from them first.
    if (m_vertexTable)
        m_vertexTable->setModel(nullptr);
    if (m_minMaxVertexTable)
        m_minMaxVertexTable->setModel(nullptr);
    if (m_treeView)
        m_treeView->setModel(nullptr);
    delete m_dataRoot;
}

MatrixData* QDataAnalyserDialog::createMatrixData(const QString& name, const QString& typeName, int rows, bool)
{
    return new MatrixData(name, rows, 1, MatrixData::systemType(typeName), true);
}

void QDataAnalyserDialog::initialize(const QString& chartSettingsKey, QMenu* tableMenu, UnitRegistry* registry,
                                     Qt::Orientation splitterOrientation, bool crossPlotDefaultsToFirstEntry,
                                     bool withOrientationCharts, bool withDepthPlot, bool withBarChart, bool withHistogram, bool withCrossPlot, int minMaxMode,
                                     bool withFieldData, bool hideCoordinateColumns)
{
    if (m_dataRoot && !m_dataRoot->registry())
        m_dataRoot->setRegistry(registry);
    m_displayUnitManager = registry ? registry->displayUnitManager() : nullptr;
    m_withFieldData = withFieldData;
    m_tableMenu = tableMenu ? tableMenu : createDefaultPopupMenu();

    auto* mainLayout = new QGridLayout(this);
    mainLayout->setContentsMargins(0, 0, 0, 0);
    m_treeSplitter = new QSplitter(this);
    mainLayout->addWidget(m_treeSplitter, 0, 0);

    m_treeFrame = new QWidget(m_treeSplitter);
    auto* treeLayout = new QGridLayout(m_treeFrame);
    m_treeView = new QAttributeTreeView(this, withFieldData);
    m_treeView->setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Preferred);
    m_treeView->setMinimumSize(150, 100);
    if (withFieldData)
        connect(m_treeView, SIGNAL(initializeFieldDataSheet(bool)), this, SLOT(initializeFieldDataSheet(bool)));
    treeLayout->addWidget(m_treeView, 0, 0);

    m_treeItemModel = new QTreeItemModel(this, m_dataRoot);
    connect(m_treeItemModel, SIGNAL(dataModified(bool)), this, SIGNAL(dataModified(bool)));
    connect(m_treeItemModel, SIGNAL(updateView()), m_treeView, SLOT(updateView()));

    m_validCellsOnlyGroupBox = new QGroupBox(tr("Show Valid Cells only"), m_treeFrame);
    m_validCellsOnlyGroupBox->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_validCellsOnlyGroupBox->setCheckable(true);
    m_validCellsOnlyGroupBox->setChecked(false);
    auto* filterLayout = new QGridLayout(m_validCellsOnlyGroupBox);
    m_filterComboBox = new QComboBox(m_validCellsOnlyGroupBox);
    filterLayout->addWidget(m_filterComboBox, 0, 0);
    treeLayout->addWidget(m_validCellsOnlyGroupBox, 1, 0);
    m_showEmptyAttributesCheckBox = new QCheckBox(tr("Show Empty Attributes"), m_treeFrame);
    m_showEmptyAttributesCheckBox->setChecked(false);
    treeLayout->addWidget(m_showEmptyAttributesCheckBox, 2, 0);
    connect(m_validCellsOnlyGroupBox, SIGNAL(clicked(bool)), this, SLOT(setFilterKeyColumn()));
    connect(m_filterComboBox, SIGNAL(activated(QString)), this, SLOT(setFilterKeyColumn()));
    connect(m_showEmptyAttributesCheckBox, SIGNAL(toggled(bool)), this, SIGNAL(showEmptyAttributesChanged()));

    m_tabWidget = new TabWidgetWithFloatingTabs(m_treeSplitter);
    m_tabWidget->setCurrentIndex(0);
    connect(m_tabWidget, SIGNAL(currentChanged(int)), this, SLOT(slotTabWidgetChanged()));
    m_treeSplitter->setOrientation(splitterOrientation);
    // Extra room goes to the sheet and charts; the tree keeps the width it was given.
    m_treeSplitter->setStretchFactor(0, 0);
    m_treeSplitter->setStretchFactor(1, 1);

    // Chart panels not built yet have no tab; the order of those that exist is kept.
    if (!createFaultTDEToolTab(chartSettingsKey)) {
        createMohrDiagramChart(chartSettingsKey);
        createTableWidget(m_tableMenu, minMaxMode, withFieldData);
        createTreeWidget();
        if (withBarChart)
            createBarDiagram(chartSettingsKey);
        if (withHistogram)
            createHistogram(chartSettingsKey);
        if (withCrossPlot)
            createRelationshipChart(chartSettingsKey);
        if (withOrientationCharts) {
            createRoseChart(chartSettingsKey);
            createStereoChart(chartSettingsKey);
            createTangentChart(chartSettingsKey);
        }
        if (withDepthPlot)
            createDepthPlot(chartSettingsKey);
    } else {
        createMohrDiagramChart(chartSettingsKey);
        createRoseChart(chartSettingsKey);
        if (withDepthPlot)
            createDepthPlot(chartSettingsKey);
        if (withBarChart)
            createBarDiagram(chartSettingsKey);
        if (withHistogram)
            createHistogram(chartSettingsKey);
        if (withCrossPlot)
            createRelationshipChart(chartSettingsKey);
        createTableWidget(m_tableMenu, minMaxMode, withFieldData);
        createTreeWidget();
    }

    if (m_crossPlotChart)
        m_crossPlotChart->defaultComboBoxSelectionFromTopEntries(crossPlotDefaultsToFirstEntry);
    QFinalPolish(this);
    readSettings(m_settingsMainGroup);
    untickHiddenColumns(hideCoordinateColumns);

    m_vertexTable->updateView();
    m_minMaxVertexTable->updateView();
    m_vertexTable->slotClearSelection();
    m_minMaxVertexTable->slotClearSelection();
    if (m_dataRoot && m_dataRoot->numberOfSelectedItems() == 0) {
        m_vertexTable->resetEmpty();
        m_minMaxVertexTable->resetEmpty();
    }
    syncColumnWidths();
    refillChartSelectionBoxes();
    slotTabWidgetChanged();
}

void QDataAnalyserDialog::syncColumnWidths()
{
    if (!m_vertexTable || !m_minMaxVertexTable || !m_minMaxVertexTable->model())
        return;
    QHeaderView* header = m_minMaxVertexTable->horizontalHeader();
    const bool blocked = header->blockSignals(true);
    for (int c = 0; c < m_minMaxVertexTable->model()->columnCount(); ++c)
        header->resizeSection(c, m_vertexTable->columnWidth(c));
    header->blockSignals(blocked);
}

void QDataAnalyserDialog::untickHiddenColumns(bool hideCoordinates)
{
    if (!m_dataRoot)
        return;
    for (MatrixData* leaf : m_dataRoot->leafs()) {
        const QString n = leaf->name();
        if (n == QLatin1String("Dip Data Symbol Style")
            || (hideCoordinates && (n == QLatin1String("X(East)") || n == QLatin1String("Y(North)") || n == QLatin1String("Z"))))
            leaf->setSelected(false, false);
    }
}

QMenu* QDataAnalyserDialog::createDefaultPopupMenu()
{
    auto tr = [](const char* text) { return QCoreApplication::translate("AttributeBrowser", text); };
    auto* menu = new QMenu(tr("Default Menu"), this);
    menu->addAction(QIcon(QStringLiteral(":/rkview/Resources/find.png")), tr("Select Cell(s)..."), this,
                    SLOT(showSelectValueCellsDlg()));
    menu->addAction(QIcon(QStringLiteral(":/rkview/Resources/arrow_switch.png")), tr("Invert Row Selection"), this,
                    SLOT(selectInverse()));
    menu->addSeparator();
    QAction* copy = menu->addAction(QIcon(QStringLiteral(":/rkview/Resources/page_copy.png")), tr("Copy"), this,
                                    SLOT(copyToClipboard()));
    copy->setShortcut(QKeySequence(QStringLiteral("Ctrl+C")));
    m_pasteAction = menu->addAction(QIcon(QStringLiteral(":/rkview/Resources/page_paste.png")), tr("Paste"), this,
                                    SLOT(pasteFromClipboard()));
    m_pasteAction->setShortcut(QKeySequence(QStringLiteral("Ctrl+V")));
    m_pasteAction->setEnabled(false);
    menu->addSeparator();
    menu->addAction(tr("Save As..."), this, SLOT(slotSaveAs()));
    return menu;
}

void QDataAnalyserDialog::createTableWidget(QMenu* menu, int minMaxMode, bool withFieldData)
{
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("TABLE"));
    const QIcon icon(QStringLiteral(":/rkBaseQt/Resources/table.png"));
    page->setWindowIcon(icon);
    m_tabWidget->addTab(page, icon, tr("Table View"));
    auto* layout = new QGridLayout(page);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->setSpacing(2);
    auto* minMaxFrame = new QFrame(page);
    minMaxFrame->setObjectName(QStringLiteral("VertexMinMaxTableFrame"));
    auto* vertexFrame = new QFrame(page);
    vertexFrame->setObjectName(QStringLiteral("VertexTableFrame"));
    layout->addWidget(minMaxFrame, 0, 0);
    layout->addWidget(vertexFrame, 1, 0);
    auto* minMaxLayout = new QGridLayout(minMaxFrame);
    minMaxLayout->setContentsMargins(0, 0, 0, 0);
    auto* vertexLayout = new QGridLayout(vertexFrame);
    vertexLayout->setContentsMargins(0, 0, 0, 0);

    m_vertexTable = new QVertexModelTableView(vertexFrame, menu, minMaxMode != 0, true, false);
    vertexLayout->addWidget(m_vertexTable, 0, 0);
    m_vertexItemModel = new QVertexItemModel(vertexFrame, m_dataRoot, -1, withFieldData, nullptr);
    connect(m_vertexItemModel, SIGNAL(dataModified(bool)), this, SLOT(slotDataModified(bool)));
    m_proxyModel = new QSortFilterProxyVertexItemModel(this);
    m_proxyModel->setSourceModel(m_vertexItemModel);
    m_vertexTable->setModel(m_proxyModel);

    m_minMaxVertexTable = new QVertexMinMaxModelTableView(m_dataRoot ? m_dataRoot->registry() : nullptr, minMaxFrame);
    minMaxLayout->addWidget(m_minMaxVertexTable, 0, 0);
    if (withFieldData)
        m_minMaxVertexTable->setEditTriggers(QAbstractItemView::AllEditTriggers);
    connect(m_minMaxVertexTable->horizontalHeader(), SIGNAL(sortIndicatorChanged(int, Qt::SortOrder)), m_vertexTable,
            SLOT(slotSortIndicatorChanged(int, Qt::SortOrder)));
    m_minMaxVertexItemModel = new QVertexMinMaxItemModel(vertexFrame, m_dataRoot, minMaxMode, withFieldData);
    connect(m_minMaxVertexItemModel, SIGNAL(dataModified(bool)), this, SLOT(onDataModifiedTableMinMax(bool)));
    connect(m_minMaxVertexItemModel, SIGNAL(dataModified(bool)), this, SLOT(slotDataModified(bool)));
    connect(m_minMaxVertexItemModel, SIGNAL(dataModified(bool)), this, SLOT(updateChartDataSetSelectionBoxes()));
    connect(m_minMaxVertexItemModel, SIGNAL(unitCategoryChanged()), this, SLOT(hideShowOrientationWindows()));
    connect(m_minMaxVertexTable, SIGNAL(convertNodeUnits(QModelIndex)), m_vertexTable, SLOT(slotConvertNodeUnits(QModelIndex)));
    m_minMaxVertexTable->setModel(m_minMaxVertexItemModel);
    m_minMaxVertexTable->setProxyModel(m_proxyModel);
    m_minMaxVertexTable->setCurrentIndex(m_minMaxVertexItemModel->index(0, 0));

    const int h = static_cast<int>(fontMetrics().height() * (minMaxMode == 4 ? 8.0 : 9.66));
    minMaxFrame->setMinimumSize(0, h);
    minMaxFrame->setMaximumSize(16777215, h);
    if (minMaxMode == 0)
        minMaxFrame->hide();

    connect(m_minMaxVertexTable, SIGNAL(sectionResized(int, int, int)), m_vertexTable, SLOT(setColumnWidth(int, int, int)));
    // With a min/max table its header is the only one shown: a click there selects the column.
    connect(m_minMaxVertexTable, SIGNAL(sectionClicked(int)), m_vertexTable, SLOT(slotSectionClicked(int)));
    connect(m_minMaxVertexTable, SIGNAL(sectionClicked(int)), m_minMaxVertexTable, SLOT(slotClearSelection()));
    connect(m_vertexTable, SIGNAL(sliderMoved(int)), m_minMaxVertexTable, SLOT(slotSliderMoved(int)));
    connect(m_vertexTable, SIGNAL(clicked(QModelIndex)), this, SLOT(checkResetChartsUpdateNeeded()));
    connect(m_vertexTable, SIGNAL(clicked(QModelIndex)), m_minMaxVertexTable, SLOT(slotClearSelection()));
    connect(m_vertexTable, SIGNAL(clicked(QModelIndex)), this, SLOT(enablePasteAction()));
    connect(m_vertexTable->verticalHeader(), SIGNAL(sectionClicked(int)), this, SLOT(markAllChartsForUpdate()));
    connect(m_vertexTable->verticalHeader(), SIGNAL(sectionClicked(int)), m_vertexTable, SLOT(turnOffSelectionRectangle()));
    connect(m_vertexTable->verticalHeader(), SIGNAL(sectionClicked(int)), m_vertexTable, SLOT(clearSelectedItemList()));
    connect(m_vertexTable->horizontalHeader(), SIGNAL(sectionClicked(int)), this, SLOT(sortingPerformed()));
    connect(m_minMaxVertexTable->horizontalHeader(), SIGNAL(sectionClicked(int)), this, SLOT(sortingPerformed()));
    connect(m_minMaxVertexTable->horizontalHeader(), SIGNAL(sectionClicked(int)), m_vertexTable, SLOT(clearSelectedItemList()));
}

void QDataAnalyserDialog::createTreeWidget()
{
    connect(m_treeItemModel, SIGNAL(treeItemNameChanged(rkBase::MatrixData*)), this, SLOT(updateChartDataSetSelectionBoxes()));
    connect(m_treeItemModel, SIGNAL(treeItemNameChanged(rkBase::MatrixData*)), this, SLOT(updateTableViews()));
    connect(m_treeItemModel, SIGNAL(treeItemSelected(QModelIndex)), this, SLOT(updateTableViews()));
    connect(m_treeItemModel, SIGNAL(treeItemSelected(QModelIndex)), this, SLOT(updateChartDataSetSelectionBoxes()));
    connect(m_treeView, SIGNAL(clicked(QModelIndex)), this, SLOT(accept_ClearSelection()));
    connect(m_treeView, SIGNAL(clicked(QModelIndex)), this, SLOT(setCurrentHistogramDataSet()));
    connect(m_vertexTable, SIGNAL(tableItemSelected()), m_treeView, SLOT(clearSelection()));
    connect(m_vertexTable, SIGNAL(clicked(QModelIndex)), m_treeView, SLOT(clearSelection()));
    connect(m_minMaxVertexTable, SIGNAL(clicked(QModelIndex)), m_treeView, SLOT(clearSelection()));
    connect(m_treeView, SIGNAL(treeItemsChanged()), this, SLOT(updateChartDataSetSelectionBoxes()));
    m_treeView->setModel(m_treeItemModel);
    m_treeView->expandAll();
}

bool QDataAnalyserDialog::createFaultTDEToolTab(const QString&)
{
    return false;
}

bool QDataAnalyserDialog::createMohrDiagramChart(const QString&)
{
    return false;
}

// ---------------------------------------------------------------------------------------------
// Data root and tabs

void QDataAnalyserDialog::changeDataRoot(MatrixData* root)
{
    m_dataRoot = root;
    if (!m_vertexItemModel)
        return;
    m_validCellsOnlyGroupBox->setChecked(false);
    m_proxyModel->setFilterEmptyCells(false);
    if (!root)
        return;
    m_vertexItemModel->setDataRoot(root);
    m_minMaxVertexItemModel->setDataRoot(root);
    m_treeItemModel->setDataRoot(root);
    if (m_barChart)
        m_barChart->setDataRoot(root);
    if (m_histogramChart)
        m_histogramChart->setDataRoot(root);
    if (m_depthPlot)
        m_depthPlot->setDataRoot(root);
    if (m_crossPlotChart)
        m_crossPlotChart->setDataRoot(root);
    if (m_stereoChart)
        m_stereoChart->setDataRoot(root);
    if (m_tangentChart)
        m_tangentChart->setDataRoot(root);
    hideShowOrientationWindows();
}

QWidget* QDataAnalyserDialog::chartPage(const QString& key) const
{
    if (m_tabWidget)
        if (QWidget* page = m_tabWidget->findPage(key))
            return page;
    return findChild<QWidget*>(key);
}

void QDataAnalyserDialog::showTab(const QString& key, const QString& title)
{
    QWidget* page = chartPage(key);
    if (page && m_tabWidget && m_tabWidget->indexOf(page) < 0)
        m_tabWidget->addTab(page, page->windowIcon(), title);
}

void QDataAnalyserDialog::hideTab(const QString& key)
{
    QWidget* page = chartPage(key);
    if (!page || !m_tabWidget)
        return;
    page->hide();
    const int at = m_tabWidget->indexOf(page);
    if (at >= 0)
        m_tabWidget->removeTab(at);
}

void QDataAnalyserDialog::hideShowOrientationWindows()
{
    if (!m_tabWidget || !m_dataRoot)
        return;
    if (m_dataRoot->hasOrientationData()) {
        m_tabWidget->setUpdatesEnabled(false);
        const QString keys[] = {QStringLiteral("STEREOPLOT"), QStringLiteral("ROSEPLOT"), QStringLiteral("TANGENTPLOT"),
                                QStringLiteral("WELLLOGPLOT")};
        const QString titles[] = {tr("Stereo Plot"), tr("Rose Plot"), tr("Tangent Plot"), tr("Depth Plot")};
        for (int i = 0; i < 4; ++i)
            showTab(keys[i], titles[i]);
        m_tabWidget->setUpdatesEnabled(true);
    } else {
        const bool blocked = m_tabWidget->blockSignals(true);
        for (const char* key : {"STEREOPLOT", "ROSEPLOT", "TANGENTPLOT"})
            hideTab(QLatin1String(key));
        m_tabWidget->blockSignals(blocked);
    }
}

void QDataAnalyserDialog::setUltraLightMode()
{
    if (m_tabWidget) {
        int i = 0;
        while (i < m_tabWidget->count()) {
            const QString key = m_tabWidget->widget(i)->objectName();
            if (key == QLatin1String("ROSEPLOT") || key == QLatin1String("STEREOPLOT") || key == QLatin1String("TANGENTPLOT")
                || key == QLatin1String("TABLE")) {
                ++i;
                continue;
            }
            QWidget* page = m_tabWidget->widget(i);
            m_tabWidget->removeTab(i);
            page->hide();
        }
    }
    setLightMode();
}

void QDataAnalyserDialog::concealTreeWidget()
{
    QSettings settings;
    settings.beginGroup(settingsPath() + QStringLiteral("/tree_splitter_size"));
    const bool sized = settings.contains(QStringLiteral("tree_splitter"));
    settings.endGroup();
    if (!sized && m_treeSplitter) {
        QList<int> sizes = m_treeSplitter->sizes();
        if (!sizes.isEmpty()) {
            sizes[1 < sizes.size() ? 1 : 0] += sizes[0];
            sizes[0] = 0;
            m_treeSplitter->setSizes(sizes);
        }
    }
}

void QDataAnalyserDialog::hide()
{
    hideSelectValueCellsDlg();
    QWidget::hide();
}

void QDataAnalyserDialog::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (m_resetSplittersOnResize)
        m_splitterResetPending = true;
}

QList<unsigned long long> QDataAnalyserDialog::getTableIdOrder() const
{
    QList<unsigned long long> order;
    if (!m_proxyModel)
        return order;
    for (int r = 0; r < m_proxyModel->rowCount(); ++r)
        order.append(static_cast<unsigned long long>(m_proxyModel->mapToSource(m_proxyModel->index(r, 0)).row()));
    return order;
}

void QDataAnalyserDialog::setDynamicSorting(bool on)
{
    if (m_proxyModel)
        m_proxyModel->setDynamicSortFilter(on);
}

void QDataAnalyserDialog::resetProxyModel()
{
    if (!m_vertexTable || !m_vertexItemModel)
        return;
    QSortFilterProxyVertexItemModel* old = m_proxyModel;
    m_proxyModel = new QSortFilterProxyVertexItemModel(this);
    m_proxyModel->setSourceModel(m_vertexItemModel);
    m_vertexTable->setModel(m_proxyModel);
    m_minMaxVertexTable->setProxyModel(m_proxyModel);
    delete old;
}

void QDataAnalyserDialog::setShowEmptyAttributes(bool on)
{
    if (m_showEmptyAttributesCheckBox)
        m_showEmptyAttributesCheckBox->setChecked(on);
}

bool QDataAnalyserDialog::showEmptyAttributes() const
{
    return m_showEmptyAttributesCheckBox && m_showEmptyAttributesCheckBox->isChecked();
}

UnitRegistry* QDataAnalyserDialog::registry() const
{
    return m_dataRoot ? m_dataRoot->registry() : nullptr;
}

void QDataAnalyserDialog::setRegistry(UnitRegistry* registry)
{
    if (m_dataRoot)
        m_dataRoot->setRegistry(registry);
}

// ---------------------------------------------------------------------------------------------
// Updates

void QDataAnalyserDialog::updateFilterComboBox()
{
    if (!m_filterComboBox || !m_dataRoot)
        return;
    QList<QString> names;
    QList<int> ids;
    QList<QColor> colors;
    m_dataRoot->getDataSetSelectionBoxItems(names, ids, colors, MatrixData::AllAttributes, false);
    m_filterComboBox->clear();
    for (int i = 0; i < names.size(); ++i) {
        QPixmap swatch(10, 10);
        swatch.fill(colors[i].isValid() ? colors[i] : QColor(Qt::white));
        m_filterComboBox->addItem(QIcon(swatch), names[i], ids[i]);
    }
    if (m_proxyModel)
        m_proxyModel->setFilterKeyColumn(0);
}

void QDataAnalyserDialog::updateAllViews(bool wellMarkerMode, bool emitSignalDataModified)
{
    if (!m_vertexItemModel)
        return;
    // The ticks first, so that the table is rebuilt once: on a million rows each rebuild of the
    // sorted and filtered rows costs tens of milliseconds.
    for (MatrixData* leaf : m_dataRoot ? m_dataRoot->leafs() : QList<MatrixData*>()) {
        const QString name = leaf->name();
        if (name == QLatin1String("Dip Data Symbol Style")
            || (wellMarkerMode
                && (name == QLatin1String("X(East)") || name == QLatin1String("Y(North)") || name == QLatin1String("Z"))))
            leaf->setSelected(false, false);
    }
    m_vertexTable->resetEmpty();
    m_minMaxVertexTable->resetEmpty();
    m_treeView->clearSelection();
    m_treeView->updateView();
    m_treeView->expandAll();
    m_vertexTable->updateView();
    m_minMaxVertexTable->updateView();
    m_vertexTable->slotClearSelection();
    m_minMaxVertexTable->slotClearSelection();
    syncColumnWidths();
    refillChartSelectionBoxes();
    slotTabWidgetChanged();
    if (emitSignalDataModified)
        emit dataModified(true);
}

void QDataAnalyserDialog::updateTableViews()
{
    if (!m_vertexTable)
        return;
    m_vertexTable->updateView();
    m_minMaxVertexTable->updateView();
    syncColumnWidths();
    m_vertexTable->clearSelection();
    m_vertexTable->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    emit m_vertexTable->verteciesSelected(std::vector<int>());
    m_vertexTable->turnOffSelectionRectangle();
    m_vertexTable->viewport()->update();
}

void QDataAnalyserDialog::updateCellView()
{
    if (!m_vertexTable)
        return;
    const std::vector<int> rows = m_vertexTable->selectedRows(0);
    m_vertexTable->resetEmpty();
    m_minMaxVertexTable->resetEmpty();
    m_vertexTable->updateView();
    m_minMaxVertexTable->updateView();
    resetChartsUpdateNeeded();
    // Rows come back three above where they were: hosts rely on this long-standing offset.
    m_vertexTable->setSelectionMode(QAbstractItemView::MultiSelection);
    for (int r : rows)
        m_vertexTable->selectTableRow(r - 3);
    m_vertexTable->setSelectionMode(QAbstractItemView::ExtendedSelection);
    slotTabWidgetChanged();
}

void QDataAnalyserDialog::slotDataModified(bool)
{
    resetChartsUpdateNeeded();
    if (m_minMaxVertexTable)
        m_minMaxVertexTable->updateView();
    emit dataModified(true);
}

void QDataAnalyserDialog::onDataModifiedTableMinMax(bool)
{
    if (m_vertexTable)
        m_vertexTable->updateView();
}

void QDataAnalyserDialog::sortingPerformed()
{
    const QList<unsigned long long> order = getTableIdOrder();
    for (int i = 0; i < order.size(); ++i)
        if (order[i] != static_cast<unsigned long long>(i)) {
            emit dataModified(true);
            return;
        }
}

void QDataAnalyserDialog::enablePasteAction()
{
    emit signalEnablePasteAction();
    const QMimeData* mime = QApplication::clipboard()->mimeData();
    if (m_pasteAction && mime && mime->hasText() && !mime->text().isEmpty())
        m_pasteAction->setEnabled(true);
}

void QDataAnalyserDialog::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    enablePasteAction();
}

void QDataAnalyserDialog::pasteFromClipboard()
{
    // The table refreshes itself after a paste; a refused one leaves the selection where it is.
    const QMimeData* mime = QApplication::clipboard()->mimeData();
    if (m_vertexTable && mime)
        m_vertexTable->setMimeData(*mime);
}

std::vector<char> QDataAnalyserDialog::saveMask() const
{
    std::vector<char> mask;
    MatrixData* first = m_dataRoot ? m_dataRoot->getFirstChildWithData() : nullptr;
    if (!first)
        return mask;
    const std::vector<int> selected = m_vertexTable ? m_vertexTable->selectedRows(0) : std::vector<int>();
    int rows = m_dataRoot->maxNumbOfSelectedRows(1, 0);
    mask.assign(static_cast<std::size_t>(std::max(rows, 0)), selected.empty() ? 1 : 0);
    for (int r : selected)
        if (r >= 0 && r < rows)
            mask[static_cast<std::size_t>(r)] = 1;
    return mask;
}

bool QDataAnalyserDialog::saveCSV(const QString& file)
{
    QString name = file;
    if (QFileInfo(name).suffix().isEmpty())
        name += QStringLiteral(".csv");
    const QFileInfo info(name);
    m_fileName = info.fileName();
    m_absolutePath = info.absolutePath();
    std::vector<char> mask = saveMask();
    std::unique_ptr<bool[]> rows(new bool[mask.size() + 1]);
    for (std::size_t i = 0; i < mask.size(); ++i)
        rows[i] = mask[i] != 0;
    const bool ok = m_dataRoot && m_dataRoot->writeCSV(name, mask.empty() ? nullptr : rows.get(), m_withFieldData, false,
                                                       false, true, this);
    if (ok)
        saveSettings();
    else
        m_fileName.clear();
    return ok;
}

bool QDataAnalyserDialog::slotSaveAs()
{
    const QString file = QFileDialog::getSaveFileName(this, tr("Save As"), m_absolutePath, tr("CSV (Comma delimited) (*.csv)"));
    if (file.isEmpty())
        return false;
    return saveCSV(file);
}

void QDataAnalyserDialog::showSelectValueCellsDlg()
{
    if (!m_selectCellsDialog) {
        m_selectCellsDialog = new QSelectCellsDialog(tr("Select Cell(s)"), false, this, Qt::Tool);
        connect(m_selectCellsDialog, SIGNAL(clicked()), this, SLOT(accept_SelectValueCellsDlg()));
        connect(m_selectCellsDialog, SIGNAL(clearSelection()), this, SLOT(accept_ClearSelection()));
        if (m_vertexTable)
            connect(m_selectCellsDialog, SIGNAL(clearFilterSelectedRows()), m_vertexTable, SLOT(slotClearFilterSelectedRows()));
        connect(m_selectCellsDialog, SIGNAL(nextItem(bool)), this, SLOT(slotScrollToNextSelectedItem(bool)));
        connect(m_selectCellsDialog, SIGNAL(previousItem(bool)), this, SLOT(slotScrollToPreviousSelectedItem(bool)));
    }
    m_selectCellsDialog->show();
    m_selectCellsDialog->raise();
}

bool QDataAnalyserDialog::hideSelectValueCellsDlg()
{
    if (!m_selectCellsDialog || !m_selectCellsDialog->isVisible())
        return false;
    m_selectCellsDialog->hide();
    return true;
}

void QDataAnalyserDialog::accept_SelectValueCellsDlg()
{
    if (!m_selectCellsDialog || !m_vertexTable)
        return;
    WaitCursor wait;
    resetChartsUpdateNeeded();
    m_vertexTable->turnOffSelectionRectangle();
    QSelectCellsDialog* d = m_selectCellsDialog;
    const bool show = d->showSelectedTableCells();
    int count = 0;
    if (d->isColumnSelection())
        count = m_vertexTable->selectColumnCells(d->columnFrom(), d->columnTo(), d->keepPreviousSelection(), show);
    else
        count = m_vertexTable->selectCells(d->value1(), d->value2(), d->method(), d->isRowSelection(),
                                           d->keepPreviousSelection(), show);
    if (show && m_proxyModel)
        m_proxyModel->setFilterKeyColumn(0);
    d->setNumberOfSelectedCells(count);
    d->setRowNumberText(m_vertexTable->scrollToNextSelectedItem(d->isRowSelection()));
    m_vertexTable->slotVertexSelected();
    slotTabWidgetChanged();
}

void QDataAnalyserDialog::slotScrollToNextSelectedItem(bool rowMode)
{
    if (!m_vertexTable)
        return;
    const QString text = m_vertexTable->scrollToNextSelectedItem(rowMode);
    if (m_selectCellsDialog)
        m_selectCellsDialog->setRowNumberText(text);
}

void QDataAnalyserDialog::slotScrollToPreviousSelectedItem(bool rowMode)
{
    if (!m_vertexTable)
        return;
    const QString text = m_vertexTable->scrollToPreviousSelectedItem(rowMode);
    if (m_selectCellsDialog)
        m_selectCellsDialog->setRowNumberText(text);
}

void QDataAnalyserDialog::selectInverse()
{
    if (!m_vertexTable || !m_vertexTable->model())
        return;
    WaitCursor wait;
    m_vertexTable->selectInverse();
    slotTabWidgetChanged();
}

void QDataAnalyserDialog::accept_ClearSelection()
{
    WaitCursor wait;
    resetChartsUpdateNeeded();
    if (m_vertexTable)
        m_vertexTable->slotClearSelection();
    if (m_selectCellsDialog) {
        m_selectCellsDialog->setNumberOfSelectedCells(0);
        m_selectCellsDialog->setRowNumberText(QString());
    }
    slotTabWidgetChanged();
}

void QDataAnalyserDialog::setCurrentHistogramDataSet()
{
    // The histogram panel takes the tree's first selection by name; without one there is
    // nothing to hand over.
    if (!isCurrentTab("HISTOGRAM") || !m_histogramChart || !m_treeView)
        return;
    MatrixData* first = m_treeView->firstSelected();
    if (!first)
        return;
    m_histogramChart->setCurrentDataSet(first->name());
    updateHistogramData();
}

QList<QModelIndex> QDataAnalyserDialog::selectedModelCells() const
{
    QList<QModelIndex> cells;
    if (!m_vertexTable)
        return cells;
    for (const QModelIndex& cell : m_vertexTable->allSelectedIndexes())
        cells.append(m_vertexTable->mapItemToSource(cell));
    return cells;
}

QList<QModelIndex> QDataAnalyserDialog::selectedModelIndices() const
{
    QList<QModelIndex> cells;
    if (!m_vertexTable || !m_vertexItemModel)
        return cells;
    // The whole rows, read from the table's row counts rather than Qt's selectedRows(), whose
    // cost grows with the square of the selection.
    for (int r : m_vertexTable->selectedRows(0))
        cells.append(m_vertexItemModel->index(r, 0));
    return cells;
}

int QDataAnalyserDialog::insertAfterSelectedRow(bool wellMarkerMode, bool dipMode)
{
    if (!m_vertexItemModel || !m_dataRoot)
        return -1;
    const std::vector<int> selected = m_vertexTable ? m_vertexTable->selectedRows(0) : std::vector<int>();
    int row = -1;
    if (selected.empty()) {
        row = m_dataRoot->insertRowAtPos(-1);
    } else {
        QList<int> rows;
        rows.reserve(static_cast<int>(selected.size()));
        for (int r : selected)
            rows.append(r);
        const bool marker = wellMarkerMode || dipMode;
        const bool before = marker || (QGuiApplication::keyboardModifiers() & Qt::ControlModifier);
        row = m_dataRoot->insertRowsAtPos(rows, before, marker);
    }
    m_vertexItemModel->updateModel(-1, std::vector<int>());
    updateAllViews(wellMarkerMode, true);
    return row;
}

void QDataAnalyserDialog::removeSelectedRows(bool wellMarkerMode, bool dipMode)
{
    if (!m_vertexItemModel || !m_dataRoot)
        return;
    const bool marker = wellMarkerMode || dipMode;
    const std::vector<int> selected = m_vertexTable ? m_vertexTable->selectedRows(0) : std::vector<int>();
    if (marker && selected.empty()) {
        QMessageBox::information(this, tr("Information"),
                                 wellMarkerMode
                                     ? tr("No marker data has been selected.\n Please select Marker data row first.")
                                     : tr("No point / dip data has been selected.\n Please select point / dip data row first."));
        return;
    }
    QList<int> rows;
    rows.reserve(static_cast<int>(selected.size()));
    for (auto it = selected.rbegin(); it != selected.rend(); ++it)
        rows.append(*it);
    if (marker)
        std::sort(rows.begin(), rows.end(), std::greater<int>());
    m_dataRoot->removeRowsFromEachColumn(rows, marker);
    m_vertexItemModel->updateModel(-1, std::vector<int>());
    m_vertexItemModel->setModified(true);
    updateAllViews(wellMarkerMode, true);
}

void QDataAnalyserDialog::removeAllRows()
{
    if (!m_dataRoot)
        return;
    m_dataRoot->removeRowsFromEachColumn();
    if (m_vertexItemModel)
        m_vertexItemModel->updateModel(-1, std::vector<int>());
    updateAllViews(false, true);
}

// ---------------------------------------------------------------------------------------------
// Marker visibility ("$V": one Bool per row)

void QDataAnalyserDialog::setMarkerVisibility(bool all, bool scat, bool decimated, bool top, bool fault, bool visible)
{
    MatrixData* v = m_dataRoot ? m_dataRoot->getNodeFromName(QStringLiteral("$V")) : nullptr;
    if (!v)
        return;
    if (all) {
        v->setDefaultValue1(QVariant(visible));
        return;
    }
    v->setDefaultValue1(QVariant(false));
    if (scat)
        setAllScatMarkersVisibility(visible);
    if (decimated)
        setAllDecimatedDipAzimuthMarkersVisibility(visible);
    if (top) {
        setAllTypeMarkersVisibility(QStringLiteral("Top"), visible);
        setAllTopMarkersVisibility(visible);
    }
    if (fault)
        setAllTypeMarkersVisibility(QStringLiteral("Fault"), visible);
}

// The helpers below make passing rows visible whatever their second argument says: a kind that
// is asked for is shown, and every other row was hidden just before.
void QDataAnalyserDialog::setAllScatMarkersVisibility(bool)
{
    MatrixData* v = m_dataRoot->getNodeFromName(QStringLiteral("$V"));
    MatrixData* scat = m_dataRoot->getNodeFromName(QStringLiteral("SCAT"));
    if (!v || !scat)
        return;
    for (int r = 0; r < scat->rowCount(); ++r)
        if (scat->isValueValid(r, 0) && scat->value(r, 0).toBool())
            v->setValue(r, 0, QVariant(true));
}

void QDataAnalyserDialog::setAllDecimatedDipAzimuthMarkersVisibility(bool)
{
    MatrixData* v = m_dataRoot->getNodeFromName(QStringLiteral("$V"));
    MatrixData* dip = m_dataRoot->getNodeFromName(QStringLiteral("Decimated:dip"));
    MatrixData* azimuth = m_dataRoot->getNodeFromName(QStringLiteral("Decimated:azimuth"));
    if (!dip || !azimuth) {
        dip = m_dataRoot->getNodeFromName(QStringLiteral("dip"));
        azimuth = m_dataRoot->getNodeFromName(QStringLiteral("azimuth"));
    }
    if (!v || !dip || !azimuth)
        return;
    const int rows = std::min(dip->rowCount(), azimuth->rowCount());
    for (int r = 0; r < rows; ++r)
        if (dip->isValueValid(r, 0) && azimuth->isValueValid(r, 0))
            v->setValue(r, 0, QVariant(true));
}

void QDataAnalyserDialog::setAllTopMarkersVisibility(bool)
{
    MatrixData* v = m_dataRoot->getNodeFromName(QStringLiteral("$V"));
    MatrixData* dip = m_dataRoot->getNodeFromName(QStringLiteral("dip"));
    MatrixData* azimuth = m_dataRoot->getNodeFromName(QStringLiteral("azimuth"));
    MatrixData* horizon = m_dataRoot->getNodeFromName(QStringLiteral("Horizon"));
    if (!v || !dip || !azimuth || !horizon)
        return;
    for (int r = 0; r < horizon->rowCount(); ++r)
        if (!dip->isValueValid(r, 0) && !azimuth->isValueValid(r, 0) && horizon->isValueValid(r, 0)
            && !horizon->value(r, 0).toString().isEmpty())
            v->setValue(r, 0, QVariant(true));
}

void QDataAnalyserDialog::setAllTypeMarkersVisibility(const QString& type, bool)
{
    MatrixData* v = m_dataRoot->getNodeFromName(QStringLiteral("$V"));
    MatrixData* types = m_dataRoot->getNodeFromName(QStringLiteral("Type"));
    if (!v || !types)
        return;
    for (int r = 0; r < types->rowCount(); ++r)
        if (types->value(r, 0).toString() == type)
            v->setValue(r, 0, QVariant(true));
}

void QDataAnalyserDialog::clearAllSelections()
{
    if (m_vertexTable)
        m_vertexTable->slotClearSelection();
    if (m_minMaxVertexTable)
        m_minMaxVertexTable->slotClearSelection();
    if (m_treeView)
        m_treeView->clearSelection();
}

// ---------------------------------------------------------------------------------------------
// Settings

void QDataAnalyserDialog::readSettings(const QString& mainGroup)
{
    m_settingsMainGroup = mainGroup;
    PanelSettings::Shared shared;
    QSettings& settings = shared.settings();
    settings.beginGroup(settingsPath());
    const QString path = settings.value(QStringLiteral("path")).toString();
    if (!path.isEmpty())
        m_absolutePath = path;
    settings.endGroup();
    settings.beginGroup(settingsPath() + QStringLiteral("/tree_splitter_size"));
    if (m_treeSplitter) {
        if (settings.contains(QStringLiteral("tree_splitter")))
            m_treeSplitter->restoreState(settings.value(QStringLiteral("tree_splitter")).toByteArray());
        else
            m_treeSplitter->setSizes({150, 300});
    }
    settings.endGroup();
    if (m_barChart)
        m_barChart->readSettings(settingsPath() + QStringLiteral("/barchart/"));
    if (m_histogramChart)
        m_histogramChart->readSettings(settingsPath() + QStringLiteral("/histogram_plot/"));
    if (m_roseChart)
        m_roseChart->readSettings(settingsPath() + QStringLiteral("/rose_plot/"));
    if (m_stereoChart)
        m_stereoChart->readSettings(settingsPath() + QStringLiteral("/stereo_plot/"));
    if (m_tangentChart)
        m_tangentChart->readSettings(settingsPath() + QStringLiteral("/tangent_plot/"));
    if (m_crossPlotChart)
        m_crossPlotChart->readSettings(settingsPath() + QStringLiteral("/cross_plot/"));
    if (m_depthPlot)
        m_depthPlot->readSettings(settingsPath() + QStringLiteral("/well_log_plot/"));
}

void QDataAnalyserDialog::saveSettings()
{
    PanelSettings::Shared shared;
    QSettings& settings = shared.settings();
    settings.beginGroup(settingsPath());
    settings.setValue(QStringLiteral("path"), m_absolutePath);
    settings.endGroup();
    if (m_treeSplitter) {
        settings.beginGroup(settingsPath() + QStringLiteral("/tree_splitter_size"));
        settings.setValue(QStringLiteral("tree_splitter"), m_treeSplitter->saveState());
        settings.endGroup();
    }
    if (m_barChart)
        m_barChart->writeSettings();
    // The tangent panel's state is read above but never written: hosts have always had it so.
    if (m_histogramChart)
        m_histogramChart->writeSettings();
    if (m_roseChart)
        m_roseChart->writeSettings();
    if (m_stereoChart)
        m_stereoChart->writeSettings();
    if (m_crossPlotChart)
        m_crossPlotChart->writeSettings();
    if (m_depthPlot)
        m_depthPlot->writeSettings();
}

// ---------------------------------------------------------------------------------------------
// Test and start-up data

namespace {
MatrixData* addGroup(MatrixData* root, const QString& name)
{
    auto* g = new MatrixData(name, -1, -1, QVariant::String, true);
    root->appendChild(g, true);
    return g;
}

MatrixData* addColumn(MatrixData* group, const QString& name, int rows, QVariant::Type type)
{
    auto* c = new MatrixData(name, rows, 1, type, true);
    c->setColor(MatrixData::getDefaultColor(false));
    group->appendChild(c, false);
    return c;
}

void setRows(MatrixData* c, const std::vector<std::pair<int, QVariant>>& cells)
{
    for (const auto& cell : cells)
        c->setValue(cell.first, 0, cell.second);
}

void addCompactionAndVelocity(MatrixData* root)
{
    MatrixData* compaction = addGroup(root, QStringLiteral("Compaction"));
    setRows(addColumn(compaction, QStringLiteral("Porosity"), 20, QVariant::Double), {{4, 0.5}, {6, 0.6}, {9, 0.56}});
    addColumn(compaction, QStringLiteral("Initial Porosity"), 20, QVariant::Double)->setSelected(false, false);
    compaction->setSelected(false, false);
    MatrixData* velocity = addGroup(root, QStringLiteral("Time/Depth Conversion"));
    setRows(addColumn(velocity, QStringLiteral("Velocity"), 20, QVariant::Double), {{1, 2400}, {2, 2100}, {5, 1800}, {8, 2300}});
    setRows(addColumn(velocity, QStringLiteral("Initial Velocity"), 20, QVariant::Double), {{1, 2500}, {2, 2500}, {5, 2500}, {8, 2500}});
    velocity->setSelected(false, true);
}
} // namespace

void QDataAnalyserDialog::initializeBlankData(int columns, int rows)
{
    MatrixData* sheet = addGroup(m_dataRoot, QStringLiteral("Sheet1"));
    for (int c = 0; c < columns; ++c) {
        MatrixData* column = addColumn(sheet, QString(), rows, QVariant::Double);
        column->setUnitManager(UnitRegistry::CATEGORY_DIMENSIONLESS);
    }
}

void QDataAnalyserDialog::initializeDummyData()
{
    MatrixData* sheet = addGroup(m_dataRoot, QStringLiteral("Sheet1"));
    sheet->setRegistry(m_dataRoot->registry());
    for (char c = 'A'; c <= 'N'; ++c) {
        MatrixData* column = addColumn(sheet, QString(QLatin1Char(c)), 200, QVariant::Double);
        column->setUnitManager(UnitRegistry::CATEGORY_DIMENSIONLESS);
    }
}

void QDataAnalyserDialog::initializeTestData()
{
    MatrixData* vertex = addGroup(m_dataRoot, QStringLiteral("Vertex"));
    MatrixData* x = addColumn(vertex, QStringLiteral("X"), 20, QVariant::Double);
    MatrixData* y = addColumn(vertex, QStringLiteral("Y"), 20, QVariant::Double);
    for (int r = 0; r < 20; ++r) {
        x->setValue(r, 0, 1.0 + r);
        y->setValue(r, 0, 1.0 + r);
    }
    addColumn(vertex, QStringLiteral("Z"), 20, QVariant::Double)->setDefaultValue2(30.0);
    addCompactionAndVelocity(m_dataRoot);
    MatrixData* thickness = addGroup(m_dataRoot, QStringLiteral("Thickness"));
    int value = 120;
    for (const char* name : {"Thickness 1", "Thickness 2", "Thickness 3"}) {
        MatrixData* t = addColumn(thickness, QLatin1String(name), 20, QVariant::Double);
        t->setDefaultValue1(double(value));
        value += 10;
    }
    thickness->setSelected(false, true);
    MatrixData* container = addGroup(m_dataRoot, QStringLiteral("Container Group"));
    setRows(addColumn(container, QStringLiteral("Color"), 20, QVariant::Color),
            {{1, QColor(Qt::red)}, {2, QColor(Qt::green)}, {5, QColor(Qt::blue)}, {8, QColor(Qt::yellow)}});
    MatrixData* lithology = addColumn(container, QStringLiteral("Lithology"), 20, QVariant::String);
    const char* rocks[] = {"Sand", "Shale", "Carbonate", "Silt"};
    for (int r = 0; r < 20; ++r)
        lithology->setValue(r, 0, QLatin1String(rocks[r % 4]));
}

void QDataAnalyserDialog::initializeRockPropertyTestData()
{
    MatrixData* compounds = addGroup(m_dataRoot, QStringLiteral("Compounds"));
    setRows(addColumn(compounds, QStringLiteral("Sand"), 3, QVariant::Double), {{0, 100.0}, {1, 0.0}, {2, 0.0}});
    setRows(addColumn(compounds, QStringLiteral("Shale"), 3, QVariant::Double), {{0, 0.0}, {1, 100.0}, {2, 0.0}});
    MatrixData* carbonate = addColumn(compounds, QStringLiteral("Carbonate"), 3, QVariant::Double);
    carbonate->setDefaultValue2(30.0);
    m_dataRoot->setMinName(QStringLiteral("Sand"));
    m_dataRoot->setMeanName(QStringLiteral("Carbonate"));
    m_dataRoot->setMaxName(QStringLiteral("Shale"));
    addCompactionAndVelocity(m_dataRoot);
}

void QDataAnalyserDialog::initializeStratigraphyTestData()
{
    MatrixData* strat = addGroup(m_dataRoot, QStringLiteral("Stratigraphy"));
    const char* horizons[] = {"Oligocene", "Miocene", "Eocene", "Eocene1", "Eocene2", "Eocene3"};
    const char* rocks[] = {"Sand", "Shale", "Sand1", "Carbonate", "SandShale", "ShalySand"};
    MatrixData* horizon = addColumn(strat, QStringLiteral("Horizon"), 6, QVariant::String);
    MatrixData* colour = addColumn(strat, QStringLiteral("Colour"), 6, QVariant::Color);
    MatrixData* rock = addColumn(strat, QStringLiteral("Rock Properties"), 6, QVariant::String);
    MatrixData* age = addColumn(strat, QStringLiteral("Age"), 6, QVariant::Double);
    addColumn(strat, QStringLiteral("Depth(Average)"), 6, QVariant::Double);
    for (int r = 0; r < 6; ++r) {
        horizon->setValue(r, 0, QLatin1String(horizons[r]));
        rock->setValue(r, 0, QLatin1String(rocks[r]));
        age->setValue(r, 0, 10.0 * (r + 1));
        colour->setValue(r, 0, QColor::fromHsv(r * 55, 160, 230));
    }
}

} // namespace rkBase
