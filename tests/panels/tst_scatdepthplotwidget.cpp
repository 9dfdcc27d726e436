// The SCAT window driven by its controls and its tracks' signals: the form, the apparent dips,
// the tracks kept in step, and the four copies of a scenario under every kind of edit.
#include "PanelFixture.h"

#include <DepthLineField.h>
#include <QCrossPlot.h>
#include <QScatDepthPlotWidget.h>
#include <SectionCreationDialog.h>
#include <QUnitLineEdit.h>
#include <QIntSpinBoxWithSlider.h>

#include <QApplication>
#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QRadioButton>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QToolBox>
#include <QToolButton>
#include <QPushButton>
#include <QtTest>

#include <random>

using namespace rkBase;
using panelfixture::Sheet;

Q_DECLARE_METATYPE(std::vector<int>)

namespace {

using Track = QScatDepthPlotWidget::Track;

// A well of n rows whose dips swing with depth, with a depth column starting at top.
struct Well {
    Sheet sheet;
    MatrixData* dip;
    MatrixData* azimuth;
    MatrixData* depth;
    explicit Well(int n = 200, double top = 1000.0)
    {
        QVector<double> d, a, z;
        for (int i = 0; i < n; ++i) {
            d << 20.0 + 15.0 * std::sin(i * 0.1);
            a << std::fmod(90.0 + 60.0 * std::cos(i * 0.05) + 360.0, 360.0);
            z << top + i * 0.5;
        }
        dip = sheet.add(QStringLiteral("dip"), d);
        azimuth = sheet.add(QStringLiteral("azimuth"), a);
        depth = sheet.add(QStringLiteral("Measured Depth"), z);
    }
};

struct Window {
    std::unique_ptr<QScatDepthPlotWidget> w;
    QStringList questions;
    QMessageBox::StandardButton answer = QMessageBox::Cancel;
    QStringList informations;
    QString savePath;
    QStringList openPaths;
    explicit Window(Well& well)
        : w(new QScatDepthPlotWidget(nullptr, well.sheet.root.get()))
    {
        w->resize(1100, 700);
        w->setQuestion([this](QWidget*, const QString& title, const QString& text) {
            questions << title + QLatin1Char('|') + text;
            return answer;
        });
        w->setInformation([this](QWidget*, const QString& title, const QString& text) {
            informations << title + QLatin1Char('|') + text;
        });
        w->setFileDialogs([this](QWidget*, const QString&, const QString&, const QString&) { return openPaths; },
                          [this](QWidget*, const QString&, const QString&, const QString&) { return savePath; });
        w->setDataSet(well.dip, well.azimuth, well.depth, nullptr, nullptr, {});
        w->show();
    }
    template <class T>
    T* child(const char* name) const
    {
        T* c = w->findChild<T*>(QLatin1String(name));
        if (!c)
            qWarning("no child %s", name);
        return c;
    }
    std::vector<DepthLineField*> fields() const
    {
        std::vector<DepthLineField*> out;
        for (int i = 0; i < QScatDepthPlotWidget::kTrackCount; ++i)
            out.push_back(w->model(Track(i))->structuralTops());
        return out;
    }
};

// Everything a scenario holds, as one comparable text: the file's bytes plus what the file
// leaves out (selection, rows, moved flags, orientation to full precision, modified).
QString fullState(const DepthLineField& f)
{
    QString s = f.writeToText() + QLatin1Char('|') + f.name() + QLatin1Char('|') + QString::number(f.modified());
    for (std::size_t i = 0; i < f.lineDepths().size(); ++i)
        s += QStringLiteral("|%1,%2,%3,%4,%5,%6,%7,%8")
                 .arg(f.linesX()[i], 0, 'g', 17)
                 .arg(f.lineDepths()[i], 0, 'g', 17)
                 .arg(f.isSelected(int(i)))
                 .arg(f.originalRowPos()[i])
                 .arg(f.originalDepthChanged()[i])
                 .arg(f.lineOrientations()[i].x(), 0, 'g', 17)
                 .arg(f.lineOrientations()[i].y(), 0, 'g', 17)
                 .arg(f.lineColors()[i].name());
    for (int r : f.deletedOriginalRowPos())
        s += QStringLiteral("|d%1").arg(r);
    return s;
}

} // namespace

class TestScatDepthPlotWidget : public QObject
{
    Q_OBJECT
private slots:
    void formDefaults_data();
    void formDefaults();
    void apparentDip_data();
    void apparentDip();
    void newTDirectionRecomputesOnlyItsTrack();
    void keepTandL_data();
    void keepTandL();
    void missingColumnsLeaveTracksEmpty();
    void negativeDepthsInvertTheAxis();
    void tracksShareZoomAndScroll();
    void displayTypeSwitch();
    void uniqueName_data();
    void uniqueName();
    void fourCopiesStayEqual_data();
    void fourCopiesStayEqual();
    void everyEditMarksModified_data();
    void everyEditMarksModified();
    void closeAfterPickBetweenTopsAsks_data();
    void closeAfterPickBetweenTopsAsks();
    void saveUnderTakenName();
    void sectionOffersTheTDirection_data();
    void sectionOffersTheTDirection();
    void importDamagedFile();
    void closingTheLastScenario();
    void dragPastThePlotAndDeleteTheLast();
    void seedFromScatRows();
    void settingsRoundTrip();
};

void TestScatDepthPlotWidget::formDefaults_data()
{
    QTest::addColumn<QString>("object");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QVariant>("expected");
    QTest::newRow("keep T and L") << "keepTandLCheckBox" << "checked" << QVariant(true);
    QTest::newRow("keep text") << "keepTandLCheckBox" << "text" << QVariant("Keep T and L Direction");
    QTest::newRow("grid") << "m_pqShowGrid" << "checked" << QVariant(true);
    QTest::newRow("log curve") << "m_pqShowPointConnectionLine" << "checked" << QVariant(false);
    QTest::newRow("points") << "m_pqShowPoints" << "checked" << QVariant(true);
    QTest::newRow("zoom off") << "m_pqZoomFactorSpinBox" << "enabled" << QVariant(false);
    QTest::newRow("zoom max") << "m_pqZoomFactorSpinBox" << "maximum" << QVariant(20.0);
    QTest::newRow("zoom step") << "m_pqZoomFactorSpinBox" << "singleStep" << QVariant(0.1);
    QTest::newRow("point size") << "m_pqPixelSizeSpinBox" << "value" << QVariant(2);
    QTest::newRow("point size max") << "m_pqPixelSizeSpinBox" << "maximum" << QVariant(40);
    QTest::newRow("line size max") << "m_pqLinePixelSizeSpinBox" << "maximum" << QVariant(5);
    QTest::newRow("display data") << "displayDataTypeComboBox" << "currentText" << QVariant("All + Highlight Selection");
    QTest::newRow("sampling max") << "m_pqVertexFilterSpinBox" << "maximum" << QVariant(1000);
    QTest::newRow("create none") << "CreateNoneRadioButton" << "checked" << QVariant(true);
    QTest::newRow("orientations off") << "showAverageOrientations" << "checked" << QVariant(false);
    QTest::newRow("orientation labels off") << "showAverageOrientationLabels" << "checked" << QVariant(false);
    QTest::newRow("planes on") << "showStructuralPlanes" << "checked" << QVariant(true);
    QTest::newRow("domains") << "domainTypeComboBox" << "currentText" << QVariant("Stratigraphy");
    QTest::newRow("transparency") << "TransparencySpinBoxWithSlider" << "value" << QVariant(50);
    QTest::newRow("transparency max") << "TransparencySpinBoxWithSlider" << "maximum" << QVariant(100);
    QTest::newRow("create markers") << "createWellMarkersBtn" << "text" << QVariant("Create/Update");
    QTest::newRow("scroll bar hidden") << "verticalScrollBar" << "visible" << QVariant(false);
    QTest::newRow("scenario") << "selectScenarioComboBox" << "currentText" << QVariant("Scenario_0");
}

void TestScatDepthPlotWidget::formDefaults()
{
    QFETCH(QString, object);
    QFETCH(QString, property);
    QFETCH(QVariant, expected);
    Well well;
    Window win(well);
    QObject* o = win.w->findChild<QObject*>(object);
    QVERIFY2(o, qPrintable(object));
    QCOMPARE(o->property(property.toLatin1().constData()), expected);
    // The two attribute pages are gone from the tool box; three pages stay.
    auto* box = win.child<QToolBox>("m_pqToolBox");
    QCOMPARE(box->count(), 3);
    QCOMPARE(box->itemText(1), QStringLiteral("Structural Interpretation"));
}

void TestScatDepthPlotWidget::apparentDip_data()
{
    QTest::addColumn<double>("dip");
    QTest::addColumn<double>("azimuth");
    QTest::addColumn<double>("direction");
    QTest::addColumn<double>("expected"); // NaN: a blank cell
    QTest::newRow("along the dip") << 30.0 << 120.0 << 120.0 << 30.0;
    QTest::newRow("against the dip") << 30.0 << 120.0 << 300.0 << -30.0;
    QTest::newRow("across the dip") << 30.0 << 120.0 << 210.0 << 0.0;
    QTest::newRow("45 degrees off") << 45.0 << 10.0 << 55.0 << 35.264389682754654;
    QTest::newRow("vertical, along") << 90.0 << 0.0 << 0.0 << 90.0;
    // cos(90 deg) is 6e-17 in doubles and tan(90 deg) 1.6e16: the cosine decides, at 45.
    QTest::newRow("vertical, exactly across") << 90.0 << 0.0 << 90.0 << 45.0;
    QTest::newRow("blank dip") << qQNaN() << 10.0 << 10.0 << qQNaN();
    QTest::newRow("blank azimuth") << 10.0 << qQNaN() << 10.0 << qQNaN();
}

void TestScatDepthPlotWidget::apparentDip()
{
    QFETCH(double, dip);
    QFETCH(double, azimuth);
    QFETCH(double, direction);
    QFETCH(double, expected);
    Well well(3);
    for (int r = 0; r < 3; ++r) {
        well.dip->setValue(r, 0, std::isnan(dip) ? QVariant() : QVariant(dip));
        well.azimuth->setValue(r, 0, std::isnan(azimuth) ? QVariant() : QVariant(azimuth));
    }
    Window win(well);
    win.child<QUnitLineEdit>("pqTDirectionUnitLineEdit")->setModelValue(direction);
    MatrixData* t = win.w->transverseDipDataSet();
    QVERIFY(t);
    QCOMPARE(t->rowCount(), 3);
    for (int r = 0; r < 3; ++r) {
        if (std::isnan(expected)) {
            QVERIFY(!t->value(r, 0).isValid());
        } else {
            QVERIFY(t->value(r, 0).isValid());
            QVERIFY2(std::abs(t->value(r, 0).toDouble() - expected) < 1e-9,
                     qPrintable(QString::number(t->value(r, 0).toDouble(), 'g', 17)));
        }
    }
}

void TestScatDepthPlotWidget::newTDirectionRecomputesOnlyItsTrack()
{
    Well well;
    Window win(well);
    const quint64 longitudinal = win.w->longitudinalDipItemModel()->dataRevision();
    const quint64 dip = win.w->dipItemModel()->dataRevision();
    const quint64 transverse = win.w->transverseDipItemModel()->dataRevision();
    MatrixData* before = win.w->longitudinalDipDataSet();
    const QVariant cell = before->value(7, 0);
    win.child<QUnitLineEdit>("pqTDirectionUnitLineEdit")->setModelValue(77.0);
    QCOMPARE(win.w->longitudinalDipItemModel()->dataRevision(), longitudinal);
    QCOMPARE(win.w->dipItemModel()->dataRevision(), dip);
    QVERIFY(win.w->transverseDipItemModel()->dataRevision() != transverse);
    QCOMPARE(win.w->longitudinalDipDataSet()->value(7, 0), cell);
}

void TestScatDepthPlotWidget::keepTandL_data()
{
    QTest::addColumn<bool>("keep");
    QTest::addColumn<double>("t0");
    QTest::addColumn<double>("l0");
    QTest::addColumn<double>("t");
    QTest::addColumn<double>("l");
    QTest::newRow("kept pair stays") << true << 100.0 << 10.0 << 100.0 << 10.0;
    QTest::newRow("unset pair is filled") << true << 0.0 << 0.0 << 135.0 << 45.0;
    QTest::newRow("not kept is overwritten") << false << 100.0 << 10.0 << 135.0 << 45.0;
}

void TestScatDepthPlotWidget::keepTandL()
{
    QFETCH(bool, keep);
    QFETCH(double, t0);
    QFETCH(double, l0);
    QFETCH(double, t);
    QFETCH(double, l);
    Well well;
    Window win(well);
    win.child<QUnitLineEdit>("pqTDirectionUnitLineEdit")->setModelValue(t0);
    win.child<QUnitLineEdit>("pqLDirectionUnitLineEdit")->setModelValue(l0);
    win.child<QCheckBox>("keepTandLCheckBox")->setChecked(keep);
    QCOMPARE(win.child<QUnitLineEdit>("pqTDirectionUnitLineEdit")->isEnabled(), keep);
    win.w->updateTandLdirection(135.0, 45.0);
    QCOMPARE(win.w->tDirection(), t);
    QCOMPARE(win.w->lDirection(), l);
}

void TestScatDepthPlotWidget::missingColumnsLeaveTracksEmpty()
{
    Well well;
    Window win(well);
    win.w->setDataSet(well.dip, nullptr, well.depth, nullptr, nullptr, {});
    QVERIFY(!win.w->transverseDipDataSet());
    win.w->slotUpdateDiagrams();
    win.w->slotRotateInTDirection(30.0);
    win.w->slotPickPosUpdate({0, 5});
    win.w->slotMoveSelectedUpdate(QPointF(0.0, 1e300));
    QCoreApplication::processEvents();
    QVERIFY(win.w->structuralTops());
}

void TestScatDepthPlotWidget::negativeDepthsInvertTheAxis()
{
    Well well(50, -500.0);
    Window win(well);
    for (int i = 0; i < QScatDepthPlotWidget::kTrackCount; ++i)
        QCOMPARE(win.w->plot(Track(i))->originPosition(), QCrossPlot::OriginBottomLeft);
    Well deep(50, 500.0);
    win.w->setDataSet(deep.dip, deep.azimuth, deep.depth, nullptr, nullptr, {});
    for (int i = 0; i < QScatDepthPlotWidget::kTrackCount; ++i)
        QCOMPARE(win.w->plot(Track(i))->originPosition(), QCrossPlot::OriginTopLeft);
    // All four tracks show one depth range.
    const QPointF lo = win.w->plot(Track(0))->minPoint();
    for (int i = 1; i < QScatDepthPlotWidget::kTrackCount; ++i)
        QCOMPARE(win.w->plot(Track(i))->minPoint().y(), lo.y());
    QCOMPARE(win.w->plot(Track::DipTrack)->maxPoint().x(), 90.0);
    QCOMPARE(win.w->plot(Track::AzimuthTrack)->minPoint().x(), -180.0);
}

void TestScatDepthPlotWidget::tracksShareZoomAndScroll()
{
    Well well;
    Window win(well);
    QVERIFY(QTest::qWaitForWindowExposed(win.w.get()));
    win.child<QCheckBox>("m_pqZoomCheckBox")->setChecked(true);
    win.child<QDoubleSpinBox>("m_pqZoomFactorSpinBox")->setValue(4.0);
    auto* bar = win.child<QScrollBar>("verticalScrollBar");
    QVERIFY(bar->isVisible());
    QCOMPARE(bar->pageStep(), 33);
    bar->setValue(80);
    const int offset = win.w->plot(Track(0))->yOffsetPixels();
    QVERIFY(offset > 0);
    for (int i = 0; i < QScatDepthPlotWidget::kTrackCount; ++i) {
        QCOMPARE(win.w->plot(Track(i))->zoomFactor(), 4.0);
        QCOMPARE(win.w->plot(Track(i))->yOffsetPixels(), offset);
    }
    win.child<QCheckBox>("m_pqZoomCheckBox")->setChecked(false);
    QVERIFY(!bar->isVisible());
    QCOMPARE(win.w->plot(Track(3))->zoomFactor(), 1.0);
}

void TestScatDepthPlotWidget::displayTypeSwitch()
{
    Well well;
    Window win(well);
    auto* box = win.child<QComboBox>("displayDataTypeComboBox");
    QSignalSpy spy(win.w.get(), &QScatDepthPlotWidget::dataPointsSelection);
    box->setCurrentIndex(1); // "All"
    win.w->updateDisplayDataType(1);
    for (int i = 0; i < QScatDepthPlotWidget::kTrackCount; ++i)
        QCOMPARE(win.w->model(Track(i))->displayType(), QRelationshipItemModel::ShowAll);
    QCOMPARE(spy.count(), 0);
    box->setCurrentIndex(2); // "Selected Data Only" needs the owner's rows
    win.w->updateDisplayDataType(2);
    QCOMPARE(spy.count(), 1);
}

void TestScatDepthPlotWidget::uniqueName_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<QString>("expected");
    QTest::newRow("free") << QStringList{"A"} << "B" << "B";
    QTest::newRow("empty list") << QStringList{} << "Scenario_0" << "Scenario_0";
    QTest::newRow("taken with 0") << QStringList{"Scenario_0"} << "Scenario_0" << "Scenario_1";
    QTest::newRow("taken run") << QStringList{"Scenario_0", "Scenario_1", "Scenario_2"} << "Scenario_0" << "Scenario_3";
    QTest::newRow("no digits") << QStringList{"Top"} << "Top" << "Top_1";
    QTest::newRow("no digits, 1 taken") << QStringList{"Top", "Top_1"} << "Top" << "Top_2";
    QTest::newRow("digits only") << QStringList{"7"} << "7" << "8";
    QTest::newRow("no underscore") << QStringList{"Well5"} << "Well5" << "Well_5";
    QTest::newRow("huge number") << QStringList{"S_99999999999999999999999"} << "S_99999999999999999999999" << "S_1";
}

void TestScatDepthPlotWidget::uniqueName()
{
    QFETCH(QStringList, names);
    QFETCH(QString, wanted);
    QFETCH(QString, expected);
    QCOMPARE(QScatDepthPlotWidget::getUniqueName(names, wanted), expected);
}

void TestScatDepthPlotWidget::fourCopiesStayEqual_data()
{
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed : {1u, 7u, 42u, 1234u, 99991u})
        QTest::newRow(qPrintable(QStringLiteral("seed %1").arg(seed))) << seed;
}

// Any sequence of edits, each made from a track chosen at random, leaves four equal scenarios,
// and a file written from any of them has the same bytes.
void TestScatDepthPlotWidget::fourCopiesStayEqual()
{
    QFETCH(unsigned, seed);
    Well well;
    Window win(well);
    std::mt19937 rng(seed);
    auto pick = [&rng](int n) { return int(std::uniform_int_distribution<int>(0, n - 1)(rng)); };
    auto uniform = [&rng](double a, double b) { return std::uniform_real_distribution<double>(a, b)(rng); };
    const char* radios[] = {"CreateNoneRadioButton", "CrestalPlaneRadioButton", "AxialPlaneRadioButton",
                            "InflectionPlaneRadioButton", "HorizonRadioButton", "FaultRadioButton"};
    win.child<QRadioButton>("HorizonRadioButton")->setChecked(true);
    for (int step = 0; step < 300; ++step) {
        QCrossPlot* from = win.w->plot(Track(pick(QScatDepthPlotWidget::kTrackCount)));
        DepthLineField* lead = win.fields()[0];
        const int lines = int(lead->lineDepths().size());
        switch (pick(8)) {
        case 0:
        case 1:
            win.child<QRadioButton>(radios[1 + pick(5)])->setChecked(true);
            emit from->sendInsertScatUpdate(QPointF(uniform(-90.0, 90.0), uniform(990.0, 1110.0)));
            break;
        case 2:
            if (lines > 0)
                emit from->sendScatPickPos({pick(lines)});
            break;
        case 3:
            emit from->sendMoveSelectedUpdate(QPointF(uniform(-5.0, 5.0), uniform(-20.0, 20.0)));
            emit from->sendMoveSelectedUpdateStop();
            break;
        case 4:
            if (lead->isSomethingSelected())
                emit from->sendScatUpdate(QStringLiteral("Top %1").arg(step));
            break;
        case 5:
            emit from->sendScatUpdate(QColor::fromHsv(pick(360), 200, 200));
            break;
        case 6:
            emit from->sendDeleteSelectedUpdate();
            break;
        case 7:
            emit from->sendModifySelectedOrientation();
            win.w->updateMeanOrientation(QPointF(uniform(0.0, 90.0), uniform(0.0, 360.0)));
            emit from->sendModifySelectedOrientation();
            break;
        }
        const auto fields = win.fields();
        const QString first = fullState(*fields[0]);
        for (std::size_t i = 1; i < fields.size(); ++i)
            QVERIFY2(fullState(*fields[i]) == first, qPrintable(QStringLiteral("step %1, track %2").arg(step).arg(i)));
    }
    QVERIFY(win.fields()[0]->lineDepths().size() > 2);
    QTemporaryDir dir;
    QByteArray bytes;
    int i = 0;
    for (DepthLineField* f : win.fields()) {
        const QString path = dir.filePath(QStringLiteral("copy%1.txt").arg(i++));
        f->write(path);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray written = file.readAll();
        if (bytes.isEmpty())
            bytes = written;
        QCOMPARE(written, bytes);
    }
}

void TestScatDepthPlotWidget::everyEditMarksModified_data()
{
    QTest::addColumn<int>("edit");
    QTest::newRow("insert between two tops") << 0;
    QTest::newRow("move") << 1;
    QTest::newRow("rename") << 2;
    QTest::newRow("recolour") << 3;
    QTest::newRow("modify orientation") << 4;
    QTest::newRow("delete") << 5;
}

void TestScatDepthPlotWidget::everyEditMarksModified()
{
    QFETCH(int, edit);
    Well well;
    Window win(well);
    win.child<QRadioButton>("HorizonRadioButton")->setChecked(true);
    win.w->slotInsertScatUpdate(QPointF(0.0, 1010.0));
    win.w->slotInsertScatUpdate(QPointF(0.0, 1080.0));
    for (DepthLineField* f : win.fields())
        f->setModified(false);
    win.w->slotPickPosUpdate({0});
    switch (edit) {
    case 0:
        win.w->slotPickPosUpdate({});
        win.w->slotInsertScatUpdate(QPointF(0.0, 1040.0));
        QCOMPARE(win.fields()[3]->lineNames()[1], QStringLiteral("Horizon_2"));
        break;
    case 1:
        win.w->slotMoveSelectedUpdate(QPointF(0.0, 3.0));
        break;
    case 2:
        win.w->slotSendScatUpdate(QStringLiteral("Top Alpha"));
        break;
    case 3:
        win.w->slotSendScatUpdate(QColor(Qt::red));
        break;
    case 4:
        win.w->slotModifySelectedOrientation();
        win.w->updateMeanOrientation(QPointF(30.0, 120.0));
        break;
    case 5:
        win.w->slotDeleteSelected();
        break;
    }
    for (DepthLineField* f : win.fields())
        QVERIFY(f->modified());
}

void TestScatDepthPlotWidget::closeAfterPickBetweenTopsAsks_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<QString>("savePath"); // "-" for a cancelled save dialog
    QTest::addColumn<bool>("closed");
    QTest::newRow("cancel keeps") << int(QMessageBox::Cancel) << QString() << false;
    QTest::newRow("no discards") << int(QMessageBox::No) << QString() << true;
    QTest::newRow("yes, save cancelled, keeps") << int(QMessageBox::Yes) << QString() << false;
    QTest::newRow("yes, saved, closes") << int(QMessageBox::Yes) << QString("tops.txt") << true;
}

void TestScatDepthPlotWidget::closeAfterPickBetweenTopsAsks()
{
    QFETCH(int, answer);
    QFETCH(QString, savePath);
    QFETCH(bool, closed);
    QTemporaryDir dir;
    Well well;
    Window win(well);
    win.answer = QMessageBox::StandardButton(answer);
    win.savePath = savePath.isEmpty() ? QString() : dir.filePath(savePath);
    win.child<QRadioButton>("HorizonRadioButton")->setChecked(true);
    win.w->slotInsertScatUpdate(QPointF(0.0, 1010.0));
    win.w->slotInsertScatUpdate(QPointF(0.0, 1080.0));
    // Saved: nothing to ask about.
    for (DepthLineField* f : win.fields())
        f->setModified(false);
    QVERIFY(win.w->canClose());
    QVERIFY(win.questions.isEmpty());
    // The pick between the two tops.
    win.w->slotInsertScatUpdate(QPointF(0.0, 1040.0));
    QCOMPARE(win.fields()[0]->lineDepths().size(), std::size_t(3));
    win.child<QToolButton>("closeScenarioBtn")->click();
    QCOMPARE(win.questions.size(), 1);
    QCOMPARE(win.questions[0], QStringLiteral("Close|Do you want to save the changes you made to 'Scenario_0'?"));
    // Closing the only scenario leaves a fresh, empty one.
    QCOMPARE(win.w->azimuthItemModel()->structuralTopsSenarios().size(), std::size_t(1));
    QCOMPARE(win.fields()[0]->lineDepths().empty(), closed);
    QCOMPARE(win.fields()[3]->lineDepths().empty(), closed);
    if (!win.savePath.isEmpty()) {
        DepthLineField back(QStringLiteral("back"));
        back.read(win.savePath);
        QCOMPARE(back.lineDepths().size(), std::size_t(3));
    }
}

void TestScatDepthPlotWidget::saveUnderTakenName()
{
    QTemporaryDir dir;
    Well well;
    Window win(well);
    win.w->slotNewScenario();
    QCOMPARE(win.child<QComboBox>("selectScenarioComboBox")->count(), 2);
    QCOMPARE(win.child<QComboBox>("selectScenarioComboBox")->currentText(), QStringLiteral("Scenario_1"));
    win.savePath = dir.filePath(QStringLiteral("Scenario_0.txt"));
    win.w->slotSaveScenario();
    QCOMPARE(win.informations,
             QStringList{QStringLiteral("Bruneva|This name is already used so it has been changed to Scenario_1.")});
    QVERIFY(QFile::exists(win.savePath));
    QCOMPARE(win.w->lastScenarioPath(), dir.path());
    for (DepthLineField* f : win.fields())
        QCOMPARE(f->name(), QStringLiteral("Scenario_1"));
}

void TestScatDepthPlotWidget::importDamagedFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("damaged.txt"));
    {
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("banner only\n  X Depth\nnot a line\n  1 1020 6 #FF0000 0 0 Top_A\n\x01\x02garbage 1 2 3 4 5 6 7 8 9\n");
    }
    Well well;
    Window win(well);
    win.openPaths = QStringList{path, dir.filePath(QStringLiteral("missing.txt"))};
    win.w->slotOpenScenario();
    const auto& scenarios = win.w->azimuthItemModel()->structuralTopsSenarios();
    QCOMPARE(scenarios.size(), std::size_t(3));
    QCOMPARE(win.child<QComboBox>("selectScenarioComboBox")->currentText(), QStringLiteral("missing"));
    QCOMPARE(win.fields()[0]->lineDepths().size(), std::size_t(0));
    win.w->slotSelectScenario(1);
    QCOMPARE(win.fields()[2]->name(), QStringLiteral("damaged"));
    QVERIFY(!win.fields()[2]->modified());
    QCOMPARE(fullState(*win.fields()[2]), fullState(*win.fields()[0]));
}

void TestScatDepthPlotWidget::closingTheLastScenario()
{
    Well well;
    Window win(well);
    win.answer = QMessageBox::No;
    win.child<QRadioButton>("FaultRadioButton")->setChecked(true);
    win.w->slotInsertScatUpdate(QPointF(0.0, 1010.0));
    win.w->slotCloseScenario();
    // A fresh scenario takes the place of the last one, in all four models and in the box.
    QCOMPARE(win.w->azimuthItemModel()->structuralTopsSenarios().size(), std::size_t(1));
    QCOMPARE(win.w->longitudinalDipItemModel()->structuralTopsSenarios().size(), std::size_t(1));
    QVERIFY(win.fields()[0]->lineDepths().empty());
    QCOMPARE(win.child<QComboBox>("selectScenarioComboBox")->count(), 1);
    QVERIFY(win.child<QToolButton>("closeScenarioBtn")->isEnabled());
    // Fault names go on counting; horizon names start again with the scenario.
    win.w->slotInsertScatUpdate(QPointF(0.0, 1020.0));
    QCOMPARE(win.fields()[2]->lineNames()[0], QStringLiteral("Fault1"));
    QCOMPARE(fullState(*win.fields()[3]), fullState(*win.fields()[0]));
}

void TestScatDepthPlotWidget::dragPastThePlotAndDeleteTheLast()
{
    Well well;
    Window win(well);
    win.child<QRadioButton>("HorizonRadioButton")->setChecked(true);
    win.w->slotInsertScatUpdate(QPointF(0.0, 1050.0));
    win.w->slotPickPosUpdate({0});
    const double bottom = win.w->plot(Track::DipTrack)->maxPoint().y();
    win.w->slotMoveSelectedUpdate(QPointF(0.0, 1e6));
    QCOMPARE(win.fields()[1]->lineDepths()[0], bottom);
    win.w->slotMoveSelectedUpdate(QPointF(0.0, -1e9));
    QCOMPARE(win.fields()[2]->lineDepths()[0], win.w->plot(Track::DipTrack)->minPoint().y());
    win.w->slotMoveSelectedUpdate(QPointF(qQNaN(), qInf()));
    QVERIFY(std::isfinite(win.fields()[3]->lineDepths()[0]));
    win.w->slotDeleteSelected();
    for (DepthLineField* f : win.fields())
        QVERIFY(f->lineDepths().empty());
    // Nothing left to delete, move or rename.
    win.w->slotDeleteSelected();
    win.w->slotMoveSelectedUpdate(QPointF(0.0, 5.0));
    win.w->slotSendScatUpdate(QStringLiteral("x"));
    QVERIFY(win.fields()[0]->lineDepths().empty());
}

void TestScatDepthPlotWidget::seedFromScatRows()
{
    Well well(6);
    well.sheet.addText(QStringLiteral("SCAT"), {"true", "false", "true", "", "true", "true"}, QVariant::Bool);
    well.sheet.addText(QStringLiteral("Type"), {"Fault", "", "Top", "", "Axial_Plane", "Horizon"});
    well.sheet.addText(QStringLiteral("Name"), {"F1", "", "", "", "AP1", "H1"});
    well.sheet.addText(QStringLiteral("Vertex_colour"), {"#FF0000", "", "", "", "#00FF00", "#0000FF"});
    well.dip->setValue(5, 0, QVariant());
    Window win(well);
    win.w->initializeStructuralInterpretation();
    const auto fields = win.fields();
    DepthLineField* f = fields[0];
    QCOMPARE(f->lineDepths().size(), std::size_t(4));
    QCOMPARE(f->lineNames()[1], QStringLiteral("SCAT"));
    QCOMPARE(f->lineTypes()[0], DepthLineField::Fault);
    QCOMPARE(f->lineTypes()[1], DepthLineField::Top);
    QCOMPARE(f->lineColors()[1], QColor(Qt::blue));
    QCOMPARE(f->originalRowPos(), (std::vector<int>{0, 2, 4, 5}));
    QCOMPARE(f->lineOrientations()[0], QPointF(well.dip->value(0, 0).toDouble(), well.azimuth->value(0, 0).toDouble()));
    QCOMPARE(f->lineOrientations()[3], QPointF(0.0, 0.0));
    QVERIFY(!f->modified());
    for (DepthLineField* other : fields)
        QCOMPARE(fullState(*other), fullState(*f));
    // The owner's marker signals come from the two buttons.
    QSignalSpy create(win.w.get(), &QScatDepthPlotWidget::createWellMarkers);
    QSignalSpy remove(win.w.get(), &QScatDepthPlotWidget::deleteWellMarkers);
    win.child<QPushButton>("createWellMarkersBtn")->click();
    win.child<QPushButton>("deleteWellMarkersBtn")->click();
    QCOMPARE(create.count(), 1);
    QCOMPARE(remove.count(), 1);
}

void TestScatDepthPlotWidget::settingsRoundTrip()
{
    Well well;
    {
        Window win(well);
        win.w->plot(Track::DipTrack)->setGridIsOn(false);
        win.w->plot(Track::TransverseDipTrack)->setLineColor(QColor(10, 20, 30));
        win.child<QSpinBox>("m_pqVertexFilterSpinBox")->setValue(3);
        win.w->writeSettings();
    }
    QSettings s;
    QCOMPARE(s.value(QStringLiteral("scat_window/well_log_plots/dip_plot/display/show_grid")).toBool(), false);
    QCOMPARE(s.value(QStringLiteral("scat_window/well_log_plots/azimuth_plot/display/vertex_sampling")).toInt(), 3);
    s.setValue(QStringLiteral("scat_window/well_log_plots/azimuth_plot/point_style/size"), QStringLiteral("garbage"));
    s.sync();
    Window again(well);
    again.w->readSettings();
    QVERIFY(!again.w->plot(Track::DipTrack)->gridIsOn());
    QVERIFY(again.w->plot(Track::AzimuthTrack)->gridIsOn());
    QCOMPARE(again.w->plot(Track::TransverseDipTrack)->lineColor(), QColor(10, 20, 30));
    QCOMPARE(again.w->azimuthItemModel()->pointPixelSize(), 2);
    QCOMPARE(again.child<QSpinBox>("m_pqVertexFilterSpinBox")->value(), 3);
}

void TestScatDepthPlotWidget::sectionOffersTheTDirection_data()
{
    QTest::addColumn<double>("t");
    QTest::addColumn<bool>("accept");
    QTest::newRow("T 135, accepted") << 135.0 << true;
    QTest::newRow("T 0 is a direction too") << 0.0 << true;
    QTest::newRow("cancelled") << 135.0 << false;
}

// The button asks for a section with the T direction filled in, and the host hears of it only
// when the user accepts.
void TestScatDepthPlotWidget::sectionOffersTheTDirection()
{
    QFETCH(double, t);
    QFETCH(bool, accept);
    Well well;
    Window win(well);
    win.w->findChild<QCheckBox*>(QStringLiteral("keepTandLCheckBox"))->setChecked(false);
    win.w->updateTandLdirection(t, std::fmod(t + 90.0, 360.0));
    QSignalSpy sections(win.w.get(), &QScatDepthPlotWidget::createSection);
    double offered = -1.0;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<SectionCreationDialog*>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        offered = dialog->azimuth();
        dialog->setSectionName(QStringLiteral("A-A'"));
        if (accept)
            dialog->accept();
        else
            dialog->reject();
    });
    win.child<QPushButton>("createSectionBtn")->click();
    QCOMPARE(offered, t);
    QCOMPARE(sections.count(), accept ? 1 : 0);
    if (accept) {
        QCOMPARE(sections.at(0).at(0).toString(), QStringLiteral("A-A'"));
        QCOMPARE(sections.at(0).at(1).toDouble(), t);
        QCOMPARE(sections.at(0).at(2).toDouble(), 500.0);
    }
}

QTEST_MAIN(TestScatDepthPlotWidget)
#include "tst_scatdepthplotwidget.moc"
