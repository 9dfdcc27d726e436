// Tabs torn off into windows and docked back, as a user does it, with pages still found by key.
#include <FloatingTabWindow.h>
#include <TabWidgetWithFloatingTabs.h>

#include <QtTest>

#include <QTabBar>
#include <memory>

using namespace rkBase;

namespace {
QWidget* page(const QString& key)
{
    auto* w = new QWidget;
    w->setObjectName(key);
    return w;
}

std::unique_ptr<TabWidgetWithFloatingTabs> threeTabs()
{
    auto tabs = std::make_unique<TabWidgetWithFloatingTabs>();
    tabs->addTab(page(QStringLiteral("TABLE")), QStringLiteral("Table View"));
    tabs->addTab(page(QStringLiteral("HISTOGRAM")), QStringLiteral("Histogram Chart"));
    tabs->addTab(page(QStringLiteral("STEREOPLOT")), QStringLiteral("Stereo Plot"));
    tabs->resize(600, 400);
    return tabs;
}

FloatingTabWindow* windowOf(QWidget* page)
{
    return qobject_cast<FloatingTabWindow*>(page->window());
}
} // namespace

class TestTabWidgetWithFloatingTabs : public QObject
{
    Q_OBJECT
private slots:
    void floatAndDock();
    void doubleClickFloatsAndCloseDocks();
    void addingAFloatingPageDocksIt();
    void lastTabStays();
    void destroyedWhileFloating();
};

void TestTabWidgetWithFloatingTabs::floatAndDock()
{
    auto tabs = threeTabs();
    QWidget* histogram = tabs->widget(1);
    QSignalSpy floated(tabs.get(), SIGNAL(tabFloated(QWidget*)));
    QVERIFY(tabs->floatTab(1));
    QCOMPARE(floated.count(), 1);
    QCOMPARE(tabs->count(), 2);
    QCOMPARE(tabs->indexOf(histogram), -1);
    QVERIFY(tabs->isFloating(histogram));
    QCOMPARE(tabs->findPage(QStringLiteral("HISTOGRAM")), histogram);
    QCOMPARE(histogram->objectName(), QStringLiteral("HISTOGRAM"));
    QVERIFY(windowOf(histogram));
    QCOMPARE(windowOf(histogram)->windowTitle(), QStringLiteral("Histogram Chart"));
    QVERIFY(tabs->dockTab(histogram));
    QCOMPARE(tabs->indexOf(histogram), 1); // back where it was
    QCOMPARE(tabs->tabText(1), QStringLiteral("Histogram Chart"));
    QCOMPARE(tabs->currentWidget()->objectName(), QStringLiteral("HISTOGRAM"));
    QVERIFY(!tabs->isFloating(histogram));
    QVERIFY(!tabs->dockTab(histogram));
    QVERIFY(!tabs->floatTab(7));
    QCOMPARE(tabs->findPage(QStringLiteral("NOPE")), nullptr);
}

void TestTabWidgetWithFloatingTabs::doubleClickFloatsAndCloseDocks()
{
    auto tabs = threeTabs();
    tabs->show();
    QVERIFY(QTest::qWaitForWindowExposed(tabs.get()));
    QWidget* stereo = tabs->widget(2);
    QTabBar* bar = tabs->tabBar();
    QTest::mouseDClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(2).center());
    QTRY_VERIFY(tabs->isFloating(stereo));
    FloatingTabWindow* window = windowOf(stereo);
    QVERIFY(window);
    QVERIFY(window->isVisible());
    window->close(); // closing the window docks the page
    QTRY_COMPARE(tabs->indexOf(stereo), 2);
    QVERIFY(tabs->floatingPages().empty());
}

void TestTabWidgetWithFloatingTabs::addingAFloatingPageDocksIt()
{
    auto tabs = threeTabs();
    QWidget* table = tabs->widget(0);
    QVERIFY(tabs->floatTab(0));
    tabs->addTab(table, QStringLiteral("Table View")); // a caller that shows a tab by key
    QCOMPARE(tabs->indexOf(table), 2);
    QVERIFY(!tabs->isFloating(table));
    QVERIFY(tabs->floatingPages().empty());
}

void TestTabWidgetWithFloatingTabs::lastTabStays()
{
    TabWidgetWithFloatingTabs tabs;
    tabs.addTab(page(QStringLiteral("TABLE")), QStringLiteral("Table View"));
    QVERIFY(!tabs.floatTab(0));
    QCOMPARE(tabs.count(), 1);
}

void TestTabWidgetWithFloatingTabs::destroyedWhileFloating()
{
    QPointer<QWidget> floating;
    {
        auto tabs = threeTabs();
        floating = tabs->widget(1);
        QVERIFY(tabs->floatTab(1));
        QVERIFY(tabs->floatTab(0));
        tabs->dockAll();
        QCOMPARE(tabs->count(), 3);
        QVERIFY(tabs->floatTab(1));
    }
    QVERIFY(floating.isNull()); // deleted with the tab widget, not orphaned
}

QTEST_MAIN(TestTabWidgetWithFloatingTabs)
#include "tst_tabwidgetwithfloatingtabs.moc"
