// Picking and editing structural tops in the SCAT tracks, the scenario commands and the seeding
// of scenarios from the well's data. Every edit goes to the four copies of the active scenario
// in track order, so that a line keeps one index in all of them.
#include "QScatDepthPlotWidget.h"

#include "ui_QScatDepthPlotWidget.h"

#include "DepthLineField.h"
#include "SectionCreationDialog.h"

#include <MatrixData.h>
#include <MatrixDataProxy.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QSignalBlocker>
#include <QTextStream>

#include <algorithm>
#include <cmath>

namespace rkBase {

namespace {
QString editText(const char* text) { return QCoreApplication::translate("QScatDepthPlotWidget", text); }

// The text the scenario file holds for a field, read back from disk: whether a write landed.
QString fileText(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return QString();
    return QTextStream(&file).readAll();
}
} // namespace

std::array<DepthLineField*, QScatDepthPlotWidget::kTrackCount> QScatDepthPlotWidget::activeFields()
{
    std::array<DepthLineField*, kTrackCount> fields{};
    for (int i = 0; i < kTrackCount; ++i)
        fields[i] = m_tracks[i].model->structuralTops();
    return fields;
}

void QScatDepthPlotWidget::topsEdited()
{
    for (DepthLineField* f : activeFields())
        if (f)
            f->setModified(true);
    updateCharts();
}

void QScatDepthPlotWidget::deselectAllStructuralTops()
{
    for (DepthLineField* f : activeFields())
        if (f)
            f->deselectAll();
}

DepthLineField* QScatDepthPlotWidget::structuralTops() { return azimuthItemModel()->structuralTops(); }

void QScatDepthPlotWidget::addStructuralTopsSenario(const QString& name)
{
    azimuthItemModel()->addStructuralTopsSenario(name);
}

void QScatDepthPlotWidget::activateStructuralTopsSenario(const QString& name)
{
    azimuthItemModel()->activateStructuralTopsSenario(name);
}

void QScatDepthPlotWidget::clearAllStructuralTops()
{
    for (DepthLineField* f : activeFields())
        if (f)
            f->clearAll();
    updateCharts();
}

void QScatDepthPlotWidget::clearAllOriginalRowPos()
{
    for (DepthLineField* f : activeFields())
        if (f)
            f->clearOriginalRowPos();
}

// ---- creation mode and picks ----

void QScatDepthPlotWidget::setDataCreationType()
{
    const bool none = m_pqUi->CreateNoneRadioButton->isChecked();
    for (TrackParts& t : m_tracks) {
        t.plot->setDataCreationType(none ? QCrossPlot::SelectDataPoints : QCrossPlot::CreateStructuralTops);
        if (QAction* a = t.plot->modifyOrientationAction())
            a->setChecked(false);
    }
}

void QScatDepthPlotWidget::slotInsertScatUpdate(const QPointF& p)
{
    Ui::QScatDepthPlotWidget& ui = *m_pqUi;
    QColor colour(0, 0, 0, 255);
    QString name = QStringLiteral("Dummy");
    DepthLineField::DataType type = DepthLineField::CrestalPlane;
    if (ui.CrestalPlaneRadioButton->isChecked()) {
        type = DepthLineField::CrestalPlane;
        name = QStringLiteral("CP");
        colour = QColor(0, 0, 255);
    } else if (ui.AxialPlaneRadioButton->isChecked()) {
        type = DepthLineField::AxialPlane;
        name = QStringLiteral("AP");
        colour = QColor(0, 255, 0);
    } else if (ui.InflectionPlaneRadioButton->isChecked()) {
        type = DepthLineField::InflectionPlane;
        name = QStringLiteral("IP");
        colour = QColor(255, 0, 0);
    } else if (ui.HorizonRadioButton->isChecked()) {
        type = DepthLineField::Horizon;
        colour = MatrixData::getDefaultColor(horizonCount == 0);
        name = QStringLiteral("Horizon_") + QString::number(horizonCount++);
    } else if (ui.FaultRadioButton->isChecked()) {
        type = DepthLineField::Fault;
        name = QStringLiteral("Fault") + QString::number(faultCount++);
        colour = QColor(120, 120, 120);
    }
    // One tolerance for all four copies: tracks whose pixels cover different depths would
    // otherwise refuse a line in one copy and take it in another, and the copies would part.
    double eps = 0.0;
    for (TrackParts& t : m_tracks)
        eps = std::max(eps, t.plot->pickingEpsY());
    bool inserted = false;
    for (DepthLineField* f : activeFields()) {
        if (!f)
            continue;
        const std::size_t before = f->lineDepths().size();
        f->insertHorizontalLine(p.x(), p.y(), name, colour, type, eps, QPointF(0.0, 0.0), -1);
        inserted = inserted || f->lineDepths().size() != before;
    }
    if (inserted)
        topsEdited();
}

void QScatDepthPlotWidget::slotPickPosUpdate(const std::vector<int>& hits)
{
    if (QGuiApplication::keyboardModifiers() != Qt::ControlModifier)
        deselectAllStructuralTops();
    for (DepthLineField* f : activeFields())
        if (f)
            f->setSelected(hits);
    updateCharts();
}

void QScatDepthPlotWidget::slotMoveSelectedUpdate(const QPointF& delta)
{
    DepthLineField* lead = structuralTops();
    if (!lead || !lead->isSomethingSelected())
        return;
    // A top dragged past the end of the track stops at its edge rather than leaving the
    // picture, where no pick could reach it again.
    const QCrossPlot* p = plot(AzimuthTrack);
    const double top = std::min(p->minPoint().y(), p->maxPoint().y());
    const double bottom = std::max(p->minPoint().y(), p->maxPoint().y());
    double dy = delta.y();
    const auto& depths = lead->lineDepths();
    for (std::size_t i = 0; i < depths.size(); ++i) {
        if (!lead->isSelected(int(i)))
            continue;
        dy = std::clamp(depths[i] + dy, std::min(top, depths[i]), std::max(bottom, depths[i])) - depths[i];
    }
    if (!std::isfinite(dy))
        return;
    const QPointF step(std::isfinite(delta.x()) ? delta.x() : 0.0, dy);
    for (DepthLineField* f : activeFields())
        if (f)
            f->moveSelectedLines(step);
    topsEdited();
}

void QScatDepthPlotWidget::slotMoveSelectedUpdateStop() { updateCharts(); }

void QScatDepthPlotWidget::onSelectedObjectNameRequired()
{
    DepthLineField* f = structuralTops();
    if (f && f->isSomethingSelected())
        plot(LongitudinalDipTrack)->renameSelected(f->getNameOfSelectedLine());
}

void QScatDepthPlotWidget::onSelectedObjectColourRequired()
{
    DepthLineField* f = structuralTops();
    if (!f || !f->isSomethingSelected())
        return;
    const QColor current = f->getColourOfSelectedLine();
    plot(LongitudinalDipTrack)->modifySelectedColor(current.isValid() ? current : QColor(Qt::black));
}

void QScatDepthPlotWidget::slotSendScatUpdate(const QString& name)
{
    // A top without a name could not be told from the others in the labels or the file.
    if (name.trimmed().isEmpty())
        return;
    for (DepthLineField* f : activeFields())
        if (f)
            f->changePickedLineName(name.trimmed());
    topsEdited();
}

void QScatDepthPlotWidget::slotSendScatUpdate(const QColor& colour)
{
    if (!colour.isValid())
        return;
    for (DepthLineField* f : activeFields())
        if (f)
            f->changePickedLineColor(colour);
    topsEdited();
}

void QScatDepthPlotWidget::slotDeleteSelected()
{
    DepthLineField* lead = structuralTops();
    if (!lead || !lead->isSomethingSelected())
        return;
    for (DepthLineField* f : activeFields())
        if (f)
            f->erasePickedLine();
    topsEdited();
}

void QScatDepthPlotWidget::slotModifySelectedOrientation()
{
    for (TrackParts& t : m_tracks) {
        const bool on = !t.plot->modifyOrientation();
        if (on) {
            t.plot->setDataCreationType(QCrossPlot::SelectForOrientation);
            t.plot->setModifyOrientation(true);
        } else {
            t.plot->setDataCreationType(QCrossPlot::CreateStructuralTops);
        }
        if (QAction* a = t.plot->modifyOrientationAction())
            a->setChecked(on);
    }
    if (!plot(AzimuthTrack)->modifyOrientation()) {
        azimuthItemModel()->clearSelection();
        emit dataPointsSelection(azimuthItemModel()->selection());
    }
}

void QScatDepthPlotWidget::updateMeanOrientation(const QPointF& orientation)
{
    if (!plot(AzimuthTrack)->modifyOrientation())
        return;
    if (!std::isfinite(orientation.x()) || !std::isfinite(orientation.y()))
        return;
    for (DepthLineField* f : activeFields())
        if (f)
            f->changePickedOrientation(orientation);
    topsEdited();
}

void QScatDepthPlotWidget::setFileDialogs(OpenFileNames open, SaveFileName save)
{
    if (open)
        m_openFileNames = std::move(open);
    if (save)
        m_saveFileName = std::move(save);
}

// ---- scenario names ----

QString QScatDepthPlotWidget::getUniqueName(const QStringList& names, const QString& wanted)
{
    if (names.isEmpty() || !names.contains(wanted))
        return wanted;
    int digitsAt = wanted.size();
    while (digitsAt > 0 && wanted.at(digitsAt - 1).isDigit())
        --digitsAt;
    QString stem = wanted.left(digitsAt);
    bool ok = false;
    qulonglong number = digitsAt < wanted.size() ? wanted.mid(digitsAt).toULongLong(&ok) : 1;
    if (digitsAt < wanted.size() && !ok)
        number = 1;
    while (stem.endsWith(QLatin1Char('_')))
        stem.chop(1);
    if (!stem.isEmpty())
        stem += QLatin1Char('_');
    // Each name can block one candidate at most: the loop ends within names.size() + 1 steps.
    for (int i = 0; i <= names.size(); ++i, ++number) {
        const QString candidate = stem + QString::number(number);
        if (!names.contains(candidate))
            return candidate;
    }
    return stem + QString::number(number);
}

QStringList QScatDepthPlotWidget::scenarioNames() const
{
    QStringList names;
    const QComboBox* box = m_pqUi->selectScenarioComboBox;
    for (int i = 0; i < box->count(); ++i)
        names << box->itemText(i);
    return names;
}

// ---- scenario commands ----

void QScatDepthPlotWidget::updateScenarioComboBox(int index)
{
    QComboBox* box = m_pqUi->selectScenarioComboBox;
    const QSignalBlocker blocker(box);
    box->clear();
    const auto& scenarios = azimuthItemModel()->structuralTopsSenarios();
    for (std::size_t i = 0; i < scenarios.size(); ++i)
        box->addItem(scenarios[i] ? scenarios[i]->name() : QString(), int(i));
    box->setCurrentIndex(index < 0 || index >= box->count() ? box->count() - 1 : index);
}

void QScatDepthPlotWidget::slotNewScenario()
{
    QComboBox* box = m_pqUi->selectScenarioComboBox;
    if (int(azimuthItemModel()->structuralTopsSenarios().size()) == box->count()) {
        const QString name = getUniqueName(scenarioNames(), QStringLiteral("Scenario_0"));
        for (TrackParts& t : m_tracks)
            t.model->addStructuralTopsSenario(name);
        applyFormToNewScenario();
    }
    updateScenarioComboBox(-1);
    horizonCount = 0;
    const int last = box->count() - 1;
    box->setCurrentIndex(last);
    for (TrackParts& t : m_tracks) {
        t.model->setActiveScenario(std::max(0, last));
        t.plot->updateChart();
    }
    updateDiagramSettings();
    m_pqUi->closeScenarioBtn->setEnabled(box->count() > 0);
}

void QScatDepthPlotWidget::slotOpenScenario()
{
    const QStringList paths = m_openFileNames(this, editText("Import Scenario"), lastFilePath, QStringLiteral("File (*.txt)"));
    if (paths.isEmpty())
        return;
    for (const QString& path : paths)
        importScenario(path);
    lastFilePath = QFileInfo(paths.first()).absolutePath();
}

void QScatDepthPlotWidget::importScenario(const QString& path)
{
    const QString name = QFileInfo(path).completeBaseName();
    for (TrackParts& t : m_tracks) {
        t.model->addStructuralTopsSenario(name);
        if (DepthLineField* f = t.model->structuralTops()) {
            f->read(path);
            // What was just read is what the file holds: nothing to save yet.
            f->setModified(false);
        }
    }
    applyFormToNewScenario();
    updateScenarioComboBox(-1);
    slotSelectScenario(m_pqUi->selectScenarioComboBox->currentIndex());
    m_pqUi->closeScenarioBtn->setEnabled(m_pqUi->selectScenarioComboBox->count() > 0);
}

void QScatDepthPlotWidget::slotSaveScenario()
{
    QComboBox* box = m_pqUi->selectScenarioComboBox;
    DepthLineField* field = structuralTops();
    if (!field)
        return;
    const QString proposal = lastFilePath + QStringLiteral("/") + box->currentText();
    const QString path = m_saveFileName(this, editText("Save"), proposal, QStringLiteral("Ascii (*.txt)"));
    if (path.isEmpty())
        return;
    lastFilePath = QFileInfo(path).absolutePath();
    const QString base = QFileInfo(path).completeBaseName();
    if (base != field->name()) {
        QStringList others = scenarioNames();
        others.removeAt(box->currentIndex());
        const QString unique = getUniqueName(others, base);
        if (unique != base)
            m_information(this, editText("Bruneva"),
                          editText("This name is already used so it has been changed to ") + unique + QStringLiteral("."));
        // All four copies take the name, so that they stay one scenario.
        for (DepthLineField* f : activeFields())
            if (f)
                f->setName(unique);
    }
    field->write(path);
    // The file is read back: a scenario whose file did not land stays unsaved and says so.
    if (fileText(path) != field->writeToText()) {
        m_information(this, editText("Save"), editText("The scenario could not be written to ") + QDir::toNativeSeparators(path)
                                                  + QStringLiteral("."));
    } else {
        for (DepthLineField* f : activeFields())
            if (f)
                f->setModified(false);
    }
    updateScenarioComboBox(box->currentIndex());
}

void QScatDepthPlotWidget::slotSelectScenario(int index)
{
    if (index < 0)
        return;
    for (TrackParts& t : m_tracks)
        t.model->setActiveScenario(index);
    updateToolboxSettings(AzimuthTrack);
    updateCharts();
}

bool QScatDepthPlotWidget::canClose()
{
    DepthLineField* field = structuralTops();
    if (!field || !field->modified())
        return true;
    const QMessageBox::StandardButton answer = m_question(
        this, editText("Close"),
        editText("Do you want to save the changes you made to '") + field->name() + QStringLiteral("'?"));
    if (answer == QMessageBox::Yes) {
        slotSaveScenario();
        // A save that was cancelled or failed keeps the scenario: no pick is lost on the way.
        DepthLineField* after = structuralTops();
        return !after || !after->modified();
    }
    return answer == QMessageBox::No;
}

void QScatDepthPlotWidget::slotCloseScenario()
{
    if (!canClose())
        return;
    for (TrackParts& t : m_tracks)
        delete t.model->eraseActiveStructuralTopsSenario();
    // The window always has a scenario to pick into: after the last one a fresh one starts.
    if (azimuthItemModel()->structuralTopsSenarios().empty()) {
        const QString name = QStringLiteral("Scenario_0");
        for (TrackParts& t : m_tracks)
            t.model->addStructuralTopsSenario(name);
        applyFormToNewScenario();
        horizonCount = 0;
    }
    updateScenarioComboBox(0);
    updateCharts();
    updateDiagramSettings();
    m_pqUi->closeScenarioBtn->setEnabled(m_pqUi->selectScenarioComboBox->count() > 0);
}

// ---- seeding from the well ----

void QScatDepthPlotWidget::seedScenarios(const QString& markerName, bool tops)
{
    if (!dataRoot)
        return;
    MatrixData* marker = dataRoot->getNodeFromName(markerName);
    MatrixData* depth = dataRoot->getNodeFromName(QStringLiteral("Measured Depth"));
    MatrixData* type = dataRoot->getNodeFromName(QStringLiteral("Type"));
    MatrixData* name = dataRoot->getNodeFromName(QStringLiteral("Name"));
    MatrixData* colour = dataRoot->getNodeFromName(QStringLiteral("Vertex_colour"));
    MatrixData* symbol = dataRoot->getNodeFromName(QStringLiteral("well symbol"));
    if (tops) {
        if (!dataRoot->getNodeFromName(QStringLiteral("Z")))
            return;
        if (type)
            type->checkValidRowCount();
        if (colour)
            colour->checkValidRowCount();
        if (!colour || colour->validValueRowCount() == 0)
            colour = dataRoot->getNodeFromName(QStringLiteral("Colour"));
    } else if (!type || !name || !colour) {
        return;
    }
    if (!marker || !depth)
        return;
    const bool typedTops = tops && type && type->validValueRowCount() > 0;
    auto* proxy = dynamic_cast<MatrixDataProxy*>(marker);
    MatrixData* dip = dipData ? dipData : dataRoot->getNodeFromName(QStringLiteral("dip"));
    MatrixData* azimuth = azimuthData ? azimuthData : dataRoot->getNodeFromName(QStringLiteral("azimuth"));
    std::vector<DepthLineField*> touched;
    for (int r = 0; r < marker->rowCount(); ++r) {
        const QVariant cell = marker->value(r, 0);
        if (tops ? cell.toString().trimmed().isEmpty() : !(cell.isValid() && cell.toBool()))
            continue;
        bool ok = false;
        const double d = depth->value(r, 0).toDouble(&ok);
        if (!ok || !std::isfinite(d))
            continue;
        if (symbol) {
            const QString scenario = symbol->value(r, 0).toString();
            if (!scenario.isEmpty())
                for (TrackParts& t : m_tracks)
                    t.model->activateStructuralTopsSenario(scenario);
        }
        int original = r;
        if (proxy) {
            int local = -1;
            proxy->row(r, local);
            original = local;
        }
        QString lineName = tops ? cell.toString() : (name ? name->value(r, 0).toString() : QString());
        if (lineName.isEmpty())
            lineName = QStringLiteral("SCAT");
        const DepthLineField::DataType lineType =
            tops ? (typedTops ? DepthLineField::Top : DepthLineField::Horizon)
                 : DepthLineField::type(type->value(r, 0).toString());
        const QString colourText = colour ? colour->value(r, 0).toString() : QString();
        const QColor lineColour = colourText.isEmpty() ? QColor(Qt::blue) : colour->color(colourText);
        QPointF orientation(0.0, 0.0);
        if (dip && azimuth) {
            bool a = false, b = false;
            const double dv = dip->value(r, 0).toDouble(&a);
            const double av = azimuth->value(r, 0).toDouble(&b);
            if (a && b && dv != 0.0 && av != 0.0 && std::isfinite(dv) && std::isfinite(av))
                orientation = QPointF(dv, av);
        }
        for (TrackParts& t : m_tracks) {
            DepthLineField* f = t.model->structuralTops();
            if (!f)
                continue;
            f->insertHorizontalLine(0.0, d, lineName, lineColour, lineType, 1e-07, orientation, original);
            if (std::find(touched.begin(), touched.end(), f) == touched.end())
                touched.push_back(f);
        }
    }
    // Lines read from the well are what the well holds: nothing of them waits to be saved.
    for (DepthLineField* f : touched)
        f->setModified(false);
    updateScenarioComboBox(-1);
    slotSelectScenario(m_pqUi->selectScenarioComboBox->currentIndex());
}

void QScatDepthPlotWidget::initializeStructuralInterpretation() { seedScenarios(QStringLiteral("SCAT"), false); }

void QScatDepthPlotWidget::initializeTopsForStructuralInterpretation() { seedScenarios(QStringLiteral("Horizon"), true); }

void QScatDepthPlotWidget::slotCreateSection()
{
    // Across the strike is where a section shows the structure: the T direction, the direction
    // in which the dips change most, is offered as the azimuth.
    SectionCreationDialog dialog(tDirection(), this);
    if (dialog.exec() == QDialog::Accepted)
        emit createSection(dialog.sectionName(), dialog.azimuth(), dialog.halfWidth());
}

} // namespace rkBase
