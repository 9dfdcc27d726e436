// The small prompts of the interpretation, answered from the keyboard as a user would: the value
// prompt (and the cross plot's rename through it), the on/off value, marker visibility and the
// section through the well.
#include <QCrossPlot.h>
#include <QMarkerVisibilityDlg.h>
#include <QValueChangeOnOffWidget.h>
#include <SectionCreationDialog.h>
#include <ValueChangeWidget.h>

#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

#include <functional>

using namespace rkBase;

namespace {
// Runs keys against the modal prompt once it is up.
void whenModal(std::function<void(QWidget*)> act)
{
    QTimer::singleShot(0, [act] {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal) {
            whenModal(act);
            return;
        }
        act(modal);
    });
}
} // namespace

class TestSmallPrompts : public QObject
{
    Q_OBJECT
private slots:
    void valueChange_data();
    void valueChange();
    void validatorHoldsOk();
    void crossPlotRenameUsesThePrompt_data();
    void crossPlotRenameUsesThePrompt();
    void onOff_data();
    void onOff();
    void markerVisibility_data();
    void markerVisibility();
    void section_data();
    void section();
};

void TestSmallPrompts::valueChange_data()
{
    QTest::addColumn<bool>("editable");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("result");
    QTest::addColumn<bool>("cancelled");
    QTest::newRow("typed and Enter") << true << "Top Beta" << int(Qt::Key_Return) << "Top Beta" << false;
    QTest::newRow("typed and Escape") << true << "Top Beta" << int(Qt::Key_Escape) << "Top Alpha" << true;
    QTest::newRow("read-only and Enter") << false << "x" << int(Qt::Key_Return) << "Top Alpha" << true;
}

void TestSmallPrompts::valueChange()
{
    QFETCH(bool, editable);
    QFETCH(QString, typed);
    QFETCH(int, key);
    QFETCH(QString, result);
    QFETCH(bool, cancelled);
    QString title, label;
    whenModal([&](QWidget* w) {
        title = w->windowTitle();
        label = w->findChild<QLabel*>(QStringLiteral("valueLabel"))->text();
        auto* edit = w->findChild<QLineEdit*>(QStringLiteral("valueLineEdit"));
        // The whole value is selected: typing replaces it.
        QTest::keyClicks(edit, typed);
        QTest::keyClick(edit, Qt::Key(key));
        if (w->isVisible()) // a read-only prompt has no default button: Escape closes it
            QTest::keyClick(edit, Qt::Key_Escape);
    });
    bool wasCancelled = !cancelled;
    const QString value = ValueChangeWidget::getValue(QStringLiteral("Rename"), QStringLiteral("New Name"),
                                                      QStringLiteral("Top Alpha"), nullptr, editable, &wasCancelled);
    QCOMPARE(value, result);
    QCOMPARE(wasCancelled, cancelled);
    QCOMPARE(title, QStringLiteral("Rename"));
    QCOMPARE(label, QStringLiteral("New Name"));
}

void TestSmallPrompts::validatorHoldsOk()
{
    QIntValidator validator(1, 100);
    ValueChangeWidget w(QStringLiteral("Step"), QStringLiteral("Every nth row"), QStringLiteral("5"), nullptr, true,
                        &validator);
    auto* ok = w.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    QVERIFY(ok->isEnabled());
    w.lineEdit()->setText(QString());
    QVERIFY(!ok->isEnabled());
    w.lineEdit()->setText(QStringLiteral("42"));
    QVERIFY(ok->isEnabled());
}

void TestSmallPrompts::crossPlotRenameUsesThePrompt_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("emitted");
    QTest::newRow("accepted") << int(Qt::Key_Return) << 1;
    QTest::newRow("cancelled") << int(Qt::Key_Escape) << 0;
}

void TestSmallPrompts::crossPlotRenameUsesThePrompt()
{
    QFETCH(int, key);
    QFETCH(int, emitted);
    QCrossPlot plot(nullptr, nullptr);
    QSignalSpy spy(&plot, QOverload<const QString&>::of(&QCrossPlot::sendScatUpdate));
    whenModal([key](QWidget* w) {
        QVERIFY(qobject_cast<ValueChangeWidget*>(w));
        auto* edit = w->findChild<QLineEdit*>(QStringLiteral("valueLineEdit"));
        QCOMPARE(edit->text(), QStringLiteral("Horizon_0"));
        QTest::keyClicks(edit, QStringLiteral("Top Gamma"));
        QTest::keyClick(edit, Qt::Key(key));
    });
    plot.renameSelected(QStringLiteral("Horizon_0"));
    QCOMPARE(spy.count(), emitted);
    if (emitted)
        QCOMPARE(spy.at(0).at(0).toString(), QStringLiteral("Top Gamma"));
}

void TestSmallPrompts::onOff_data()
{
    QTest::addColumn<bool>("startOn");
    QTest::addColumn<bool>("toggle");
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("on");
    QTest::newRow("on, typed") << true << false << int(Qt::Key_Return) << true << 7.5 << true;
    QTest::newRow("switched off") << true << true << int(Qt::Key_Return) << true << 7.5 << false;
    QTest::newRow("cancelled keeps") << false << true << int(Qt::Key_Escape) << false << 2.0 << false;
}

void TestSmallPrompts::onOff()
{
    QFETCH(bool, startOn);
    QFETCH(bool, toggle);
    QFETCH(int, key);
    QFETCH(bool, accepted);
    QFETCH(double, value);
    QFETCH(bool, on);
    whenModal([=](QWidget* w) {
        auto* box = w->findChild<QCheckBox*>(QStringLiteral("onOffCheckBox"));
        auto* spin = w->findChild<QDoubleSpinBox*>(QStringLiteral("valueSpinBox"));
        QCOMPARE(spin->isEnabled(), startOn);
        if (startOn) {
            spin->selectAll();
            QTest::keyClicks(spin, QStringLiteral("7.5"));
        }
        if (toggle)
            box->toggle();
        QCOMPARE(spin->isEnabled(), box->isChecked());
        QTest::keyClick(w, Qt::Key(key));
    });
    double v = 2.0;
    bool isOn = startOn;
    const bool ok = QValueChangeOnOffWidget::getValue(QStringLiteral("Zoom"), QStringLiteral("Zoom Factor"),
                                                      QStringLiteral("Factor"), v, isOn, 1.0, 20.0, 1);
    QCOMPARE(ok, accepted);
    QCOMPARE(v, value);
    QCOMPARE(isOn, on);
}

void TestSmallPrompts::markerVisibility_data()
{
    QTest::addColumn<QStringList>("checked");
    QTest::addColumn<bool>("hide");
    QTest::addColumn<QString>("expected"); // all, scat, decimated, top, fault, visible
    QTest::addColumn<bool>("okEnabled");
    QTest::newRow("nothing chosen") << QStringList{} << false << "000001" << false;
    QTest::newRow("tops and faults") << QStringList{"topMarkersCheckBox", "faultMarkersCheckBox"} << false << "000111" << true;
    QTest::newRow("all covers the kinds") << QStringList{"allMarkersCheckBox", "scatMarkersCheckBox"} << true << "100000" << true;
    QTest::newRow("hide SCAT") << QStringList{"scatMarkersCheckBox"} << true << "010000" << true;
}

void TestSmallPrompts::markerVisibility()
{
    QFETCH(QStringList, checked);
    QFETCH(bool, hide);
    QFETCH(QString, expected);
    QFETCH(bool, okEnabled);
    QMarkerVisibilityDlg dlg;
    for (const QString& name : checked)
        dlg.findChild<QCheckBox*>(name)->setChecked(true);
    if (hide)
        dlg.findChild<QRadioButton*>(QStringLiteral("hideRadioButton"))->setChecked(true);
    QString got;
    for (bool b : {dlg.allMarkers(), dlg.scatMarkers(), dlg.decimatedMarkers(), dlg.topMarkers(), dlg.faultMarkers(),
                   dlg.visible()})
        got += b ? QLatin1Char('1') : QLatin1Char('0');
    QCOMPARE(got, expected);
    QCOMPARE(dlg.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled(), okEnabled);
    QCOMPARE(dlg.findChild<QCheckBox*>(QStringLiteral("topMarkersCheckBox"))->isEnabled(), !dlg.allMarkers());
}

void TestSmallPrompts::section_data()
{
    QTest::addColumn<double>("suggested");
    QTest::addColumn<double>("typed"); // NaN: use the suggestion
    QTest::addColumn<double>("azimuth");
    QTest::addColumn<bool>("suggestion");
    QTest::newRow("suggested T direction") << 135.0 << qQNaN() << 135.0 << true;
    QTest::newRow("suggestion wraps") << 405.0 << qQNaN() << 45.0 << true;
    QTest::newRow("no direction") << -1.0 << qQNaN() << 0.0 << false;
    QTest::newRow("typed past north") << 10.0 << 370.0 << 10.0 << true;
    QTest::newRow("typed negative") << 10.0 << -90.0 << 270.0 << true;
    QTest::newRow("rounds to north") << -1.0 << 359.97 << 0.0 << false;
}

void TestSmallPrompts::section()
{
    QFETCH(double, suggested);
    QFETCH(double, typed);
    QFETCH(double, azimuth);
    QFETCH(bool, suggestion);
    SectionCreationDialog dlg(suggested);
    QCOMPARE(dlg.hasSuggestion(), suggestion);
    QCOMPARE(dlg.findChild<QPushButton*>(QStringLiteral("useSuggestedButton"))->isEnabled(), suggestion);
    if (!std::isnan(typed))
        dlg.setAzimuth(typed);
    else
        dlg.findChild<QPushButton*>(QStringLiteral("useSuggestedButton"))->click();
    QCOMPARE(dlg.azimuth(), azimuth);
    // A section without a name cannot be made.
    auto* ok = dlg.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    QVERIFY(ok->isEnabled());
    dlg.findChild<QLineEdit*>(QStringLiteral("sectionNameLineEdit"))->setText(QStringLiteral("   "));
    QVERIFY(!ok->isEnabled());
}

QTEST_MAIN(TestSmallPrompts)
#include "tst_smallprompts.moc"
