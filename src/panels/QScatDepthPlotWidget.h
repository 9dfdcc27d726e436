#pragma once
// The SCAT window: one well's dips as four depth tracks side by side (azimuth, dip, transverse
// dip, longitudinal dip) against a single depth axis, where the interpreter picks structural
// tops. Transverse and longitudinal dip are the dips apparent in two chosen directions, T (of
// most change) and L (of least change), computed here into two columns the panel owns.
//
// Each track is a QCrossPlot with its own relationship model; the four show the same rows and
// share depth range, zoom, scroll, cursor and selection. Each model holds its own copy of every
// structural tops scenario, and every edit of a top goes to all four copies, always in the order
// azimuth, dip, transverse dip, longitudinal dip, so that the copies stay equal and a top picked
// in one track has the same index in the others.
//
// Rules kept here that callers could otherwise guess:
// - The dip, azimuth and depth columns are not owned. Without any one of them the tracks stay
//   empty and no message is shown.
// - A blank or non-numeric dip or azimuth cell gives a blank transverse and longitudinal cell:
//   that row shows no point in the two derived tracks.
// - With Mercator scaling (the default) the azimuth track runs -180 to 180 and azimuths above
//   180 are drawn 360 lower; the cursor still reads 0 to 360.
// - Every edit of a top made from this window marks the scenario modified, an insert between two
//   tops as well, so that closing a scenario after any pick asks whether to save it.
// - Settings: group "scat_window/last_rke_data_file_path" and one prefix per track under
//   "scat_window/well_log_plots/"; see readSettings().

#include "PanelLoadStamp.h"
#include "QCrossPlot.h"
#include "QRelationshipItemModel.h"

#include <QColor>
#include <QMap>
#include <QMessageBox>
#include <QPointF>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QWidget>

#include <boost/dynamic_bitset.hpp>

#include <array>
#include <functional>
#include <memory>
#include <vector>

class QCartesianAxisWidget;
class QFrame;
class QLabel;
class QPainter;
class QPushButton;

namespace Ui {
class QScatDepthPlotWidget;
}

namespace rkBase {

class DepthLineField;
class MatrixData;
class PanelAxes;
class QLegendListModel;

class QScatDepthPlotWidget : public QWidget
{
    Q_OBJECT
public:
    enum Track { AzimuthTrack = 0, DipTrack = 1, TransverseDipTrack = 2, LongitudinalDipTrack = 3 };
    static constexpr int kTrackCount = 4;
    using DisplayType = QRelationshipItemModel::DisplayType;
    // The window's questions and file choices; the defaults show the usual dialogs. Tests answer
    // them themselves.
    using Question = std::function<QMessageBox::StandardButton(QWidget* parent, const QString& title,
                                                               const QString& text)>;
    using Information = std::function<void(QWidget* parent, const QString& title, const QString& text)>;
    using OpenFileNames = std::function<QStringList(QWidget* parent, const QString& title, const QString& directory,
                                                    const QString& filter)>;
    using SaveFileName = std::function<QString(QWidget* parent, const QString& title, const QString& proposal,
                                               const QString& filter)>;

    QScatDepthPlotWidget(QWidget* parent, MatrixData* dataRoot, Qt::WindowFlags flags = Qt::WindowFlags());
    ~QScatDepthPlotWidget() override;

    // ---- data ----
    void setDataRoot(MatrixData* root);
    MatrixData* getDataRoot() const { return dataRoot; }
    void setDataSet(MatrixData* dip, MatrixData* azimuth, MatrixData* depth, MatrixData* colours, MatrixData* symbols,
                    const std::vector<int>& rows);
    void updateSelection(const std::vector<int>& rows);
    const std::vector<int>& selectedDataRows() const { return selectedRows; }
    MatrixData* transverseDipDataSet() const { return transverseDipData; }
    MatrixData* longitudinalDipDataSet() const { return longitudinalDipData; }
    // The apparent dip of every row in direction (degrees) into target, which is replaced when
    // its row count differs from the dip column's. Nothing happens without dip data.
    void rotateDipData(const QString& name, MatrixData*& target, double direction);

    // ---- selection boxes ----
    void updateDataSetSelectionBox(const QStringList& names, const QList<int>& ids);
    void updateSymbolAttributeDataSetSelectionBox(const QStringList& names, const QList<int>& ids, int index = 0);
    void updateColorAttributeDataSetSelectionBox(const QStringList& names, const QList<int>& ids, int index = 0);
    void updateTadPoleAttributeDataSetSelectionBox(const QStringList& names, const QList<int>& ids);

    // ---- configuration ----
    void updateMeanOrientation(const QPointF& orientation);
    void updateTandLdirection(double t, double l);
    double tDirection() const;
    double lDirection() const;
    void setDefaultYAxisRange(const QPointF& range) { defaultYAxisRange = range; }
    void setLimitYPickingToInPlots(const QPointF& limits);
    void setMercatorScaling(bool on);
    void setQuestion(Question question) { m_question = std::move(question); }
    void setInformation(Information information) { m_information = std::move(information); }
    void setFileDialogs(OpenFileNames open, SaveFileName save);

    // ---- tracks ----
    QCrossPlot* plot(Track track) const { return m_tracks[track].plot; }
    QRelationshipItemModel* model(Track track) const { return m_tracks[track].model; }
    QRelationshipItemModel* azimuthItemModel() const { return model(AzimuthTrack); }
    QRelationshipItemModel* dipItemModel() const { return model(DipTrack); }
    QRelationshipItemModel* transverseDipItemModel() const { return model(TransverseDipTrack); }
    QRelationshipItemModel* longitudinalDipItemModel() const { return model(LongitudinalDipTrack); }
    QLegendListModel* colorLegend(Track track) const { return m_tracks[track].colours; }
    QLegendListModel* symbolLegend(Track track) const { return m_tracks[track].symbols; }

    // ---- scenarios ----
    // The active scenario of the azimuth model: the copy the owner reads markers from.
    DepthLineField* structuralTops();
    void addStructuralTopsSenario(const QString& name);
    void activateStructuralTopsSenario(const QString& name);
    void clearAllStructuralTops();
    void clearAllOriginalRowPos();
    void initializeStructuralInterpretation();
    void initializeTopsForStructuralInterpretation();
    // Reads a scenario file into a new scenario named after the file, in all four models, and
    // makes it active; what was read counts as saved.
    void importScenario(const QString& path);
    // true when the active scenario may go: unchanged, or saved or discarded on the question.
    bool canClose();
    // wanted, or wanted with a number that no name in names has (see the definition).
    static QString getUniqueName(const QStringList& names, const QString& wanted);

    // ---- settings and output ----
    void readSettings();
    void writeSettings();
    QString lastScenarioPath() const { return lastFilePath; }

    // The tracks with their axes as one picture, for the clipboard and the gallery.
    QImage renderTracks();

public slots:
    void blackWhiteSwitch();
    void copyToClipboard();
    void slotRotateInTDirection(double direction);
    void slotRotateInLDirection(double direction);
    void slotUpdateDiagrams();
    void updateDiagramSettings();
    void slotUpdateChartBoundaries();
    void slotZoomFactorChanged(double zoom);
    void slotZoomFactorReset(bool on);
    void slotVerticalSliderChanged(int value);
    void slotCrossPlotLeaveEvent();
    void slotUpdateSelection(const boost::dynamic_bitset<>& bits);
    void slotUpdateChartData();
    void updateDisplayDataType(int index);
    void slotDomainTransparency(int percent);
    void enableTandLeditBoxes();
    void axisRedraw();
    void fontSizeChanged(double points);
    void slotResetAnnotationSettings();
    void changeLineColor();
    void changePointColor();

    // ---- editing of tops, in all four copies ----
    void setDataCreationType();
    void slotInsertScatUpdate(const QPointF& p);
    void slotPickPosUpdate(const std::vector<int>& hits);
    void slotMoveSelectedUpdate(const QPointF& delta);
    void slotMoveSelectedUpdateStop();
    void onSelectedObjectNameRequired();
    void onSelectedObjectColourRequired();
    void slotSendScatUpdate(const QString& name);
    void slotSendScatUpdate(const QColor& colour);
    void slotDeleteSelected();
    void slotModifySelectedOrientation();

    // ---- scenario commands ----
    void updateScenarioComboBox(int index);
    void slotNewScenario();
    void slotOpenScenario();
    void slotSaveScenario();
    void slotCloseScenario();
    // Asks for a section through the well, the T direction offered, and passes it to the host.
    void slotCreateSection();
    void slotSelectScenario(int index);

signals:
    void dataPointsSelection(const boost::dynamic_bitset<>& rows);
    void createWellMarkers();
    void deleteWellMarkers();
    // A section the user asked for through the well: its name, the azimuth it runs along in
    // degrees [0, 360) and how far it reaches on each side, in the depth unit.
    void createSection(const QString& name, double azimuth, double halfWidth);
    void requestUpdateWellDataFromModel();

private:
    struct TrackParts {
        QCrossPlot* plot = nullptr;
        QRelationshipItemModel* model = nullptr;
        QLegendListModel* colours = nullptr;
        QLegendListModel* symbols = nullptr;
        QFrame* frame = nullptr;
        QCartesianAxisWidget* top = nullptr;
        QCartesianAxisWidget* bottom = nullptr;
        QString settingsName;
    };

    void createPlot(Track track, QFrame* frame, QCartesianAxisWidget* top, QCartesianAxisWidget* bottom,
                    const QString& settingsName);
    void setupPlot(Track track);
    void initializeDataSet(MatrixData* dip, MatrixData* azimuth, MatrixData* depth, MatrixData* colours,
                           MatrixData* symbols);
    MatrixData* trackData(Track track) const;
    void wrapAzimuths();
    void showTandLdirection();
    // A scenario the window starts shows what the form shows (the orientations off, the
    // transparency of the slider); later changes go to the active tracks only.
    void applyFormToNewScenario();
    void updateDiagram(Track track);
    void updateDiagrams(bool resetAxes);
    void updateDataBoundaries(Track track, double& depthMin, double& depthMax);
    void setDefaultDataBoundaries();
    void invertDepthAxis();
    void updateSelectionFromPlot(Track track, const boost::dynamic_bitset<>& bits);
    void updateCursorPosFromPlot(Track track);
    void updateCursorPosLabel(Track track, const QPointF& p);
    void updateToolboxSettings(Track track);
    void applyZoom(double zoom);
    void updateCharts();
    // The colour dialog of the button; a chosen colour goes to the active tracks through set.
    void recolourActiveTracks(QPushButton* button, void (QChartDrawingArea::*set)(const QColor&));
    void deselectAllStructuralTops();
    // The active field of each of the four models, in track order.
    std::array<DepthLineField*, kTrackCount> activeFields();
    // An edit of the tops made here: each field is marked modified and every chart redrawn.
    void topsEdited();
    // The active plots, or all four when none is active.
    std::vector<Track> activeOrAllTracks() const;
    QStringList scenarioNames() const;
    void seedScenarios(const QString& markerName, bool tops);
    MatrixData* findColumn(const QString& name) const;
    QList<QCartesianAxisWidget*> allAxes() const;

    std::unique_ptr<Ui::QScatDepthPlotWidget> m_pqUi;
    MatrixData* dataRoot = nullptr;
    MatrixData* dipData = nullptr;
    MatrixData* azimuthData = nullptr;
    MatrixData* depthData = nullptr;
    MatrixData* colourData = nullptr;
    MatrixData* symbolData = nullptr;
    bool mercatorScaling = true;
    MatrixData* transverseDipData = nullptr;
    MatrixData* longitudinalDipData = nullptr;
    MatrixData* wrappedAzimuthData = nullptr; // owned; the azimuths the Mercator track draws
    // What every new T or L direction reads again: each row's azimuth and the tangent of its dip
    // (0 bytes for a row without both), kept while the two columns are unchanged (the stamp).
    std::vector<double> m_rotationAzimuths;
    std::vector<double> m_rotationTanDips;
    std::vector<std::uint8_t> m_rotationValid;
    PanelLoadStamp m_rotationStamp;
    std::vector<int> selectedRows;
    std::array<TrackParts, kTrackCount> m_tracks;
    int horizonCount = 0;
    int faultCount = 0;
    QString lastFilePath;
    QPointF defaultYAxisRange{0.0, 0.0};
    QPointF m_limitYPicking{QCrossPlot::kLowestFloat, QCrossPlot::kHighestFloat};
    Question m_question;
    Information m_information;
    OpenFileNames m_openFileNames;
    SaveFileName m_saveFileName;
    bool m_closing = false;
};

} // namespace rkBase
