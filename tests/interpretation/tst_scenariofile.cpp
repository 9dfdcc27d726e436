// The scenario text file: the exact bytes of a written file against a fixture made by hand,
// reading the fixture back, damaged files that must load what they can, and a round trip of
// random scenarios through write and read.
#include <DepthLineField.h>

#include <QtTest>

#include <random>

using namespace rkBase;
using DLF = DepthLineField;

namespace {
const QByteArray kBanner = "Rookvale, Structural SCAT Interpretation 4DRook2008 v1.0\n";

QByteArray fixture()
{
    QFile f(QStringLiteral(RK_TEST_DATA_DIR "/scenario.txt"));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

QByteArray readBytes(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

bool writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

// The fixture's four lines as a program builds them.
void fillFixtureLines(DLF& f)
{
    f.insertHorizontalLine(0, 1200.5, QStringLiteral("Top Reservoir"), QColor(255, 0, 0), DLF::Top, 0.01,
                           QPointF(12.5, 270), 7);
    f.insertHorizontalLine(0.25, 1234.5678, QStringLiteral("Crest"), QColor(0, 255, 0, 40), DLF::CrestalPlane, 0.01,
                           QPointF(45, 90.125), 8);
    f.insertHorizontalLine(0, 1234567.0, QStringLiteral("Main Fault North"), QColor(0, 0, 255), DLF::Fault, 0.01,
                           QPointF(-1, 0), 9);
    f.insertHorizontalLine(-3.5, 2500, QString(), QColor(0x1a, 0x2b, 0x3c), DLF::Horizon, 0.01,
                           QPointF(0, 359.999), -1);
}
} // namespace

class TestScenarioFile : public QObject
{
    Q_OBJECT
private slots:
    void writesTheFixtureBytes();
    void emptyFieldWritesBannerAndHeader();
    void readsTheFixture();
    void writeReplacesAnExistingFile();
    void missingOrUnreadable();
    void damaged_data();
    void damaged();
    void typeNumbersKept();
    void roundTrip();
};

void TestScenarioFile::writesTheFixtureBytes()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("s.txt"));
    DLF f(QStringLiteral("S"));
    fillFixtureLines(f);
    f.setModified(false);
    f.write(path);
    const QByteArray expected = fixture();
    QVERIFY(!expected.isEmpty());
    QCOMPARE(readBytes(path), expected);
    QVERIFY(!f.modified()); // writing does not touch it
    QCOMPARE(f.writeToText().toUtf8(), expected);
}

void TestScenarioFile::emptyFieldWritesBannerAndHeader()
{
    const QByteArray text = DLF(QStringLiteral("E")).writeToText().toUtf8();
    QVERIFY(text.startsWith(kBanner));
    const QByteArray header = text.mid(kBanner.size());
    QCOMPARE(header.size(), 8 * 30);
    QVERIFY(header.endsWith(QByteArray(29, ' ') + '\n'));
    QCOMPARE(header.simplified(), QByteArray("X Depth Types Colors Dip Azimuth Names"));
    QCOMPARE(header.indexOf("Names"), 7 * 30 - 5); // right-aligned
}

void TestScenarioFile::readsTheFixture()
{
    DLF f(QStringLiteral("S"));
    f.read(QStringLiteral(RK_TEST_DATA_DIR "/scenario.txt"));
    QCOMPARE(f.lineDepths(), (std::vector<double>{1200.5, 1234.57, 2500, 1.23457e+06}));
    QCOMPARE(f.linesX(), (std::vector<double>{0, 0.25, -3.5, 0}));
    QCOMPARE(f.lineNames(), (std::vector<QString>{"Top_Reservoir", "Crest", "", "Main_Fault_North"}));
    QCOMPARE(f.lineTypes(), (std::vector<DLF::DataType>{DLF::Top, DLF::CrestalPlane, DLF::Horizon, DLF::Fault}));
    QCOMPARE(f.lineColors(), (std::vector<QColor>{QColor(255, 0, 0), QColor(0, 255, 0), QColor(0x1a, 0x2b, 0x3c),
                                                 QColor(0, 0, 255)}));
    QCOMPARE(f.lineOrientations(), (std::vector<QPointF>{{12.5, 270}, {45, 90.125}, {0, 359.999}, {-1, 0}}));
    QCOMPARE(f.originalRowPos(), (std::vector<int>{-1, -1, -1, -1}));
    QVERIFY(!f.isSomethingSelected());
    QVERIFY(f.modified());
    // A second read appends.
    f.read(QStringLiteral(RK_TEST_DATA_DIR "/scenario.txt"));
    QCOMPARE(f.lineDepths().size(), std::size_t(8));
}

void TestScenarioFile::writeReplacesAnExistingFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("s.txt"));
    QVERIFY(writeBytes(path, QByteArray(5000, 'x')));
    DLF(QStringLiteral("E")).write(path);
    QCOMPARE(readBytes(path).size(), kBanner.size() + 8 * 30);
}

void TestScenarioFile::missingOrUnreadable()
{
    QTemporaryDir dir;
    DLF f(QStringLiteral("S"));
    f.read(dir.filePath(QStringLiteral("none.txt")));
    f.read(dir.path()); // a directory
    QVERIFY(f.lineDepths().empty());
    QVERIFY(!f.modified());
    fillFixtureLines(f);
    f.write(dir.filePath(QStringLiteral("no/such/dir/s.txt")));
    QVERIFY(!QFile::exists(dir.filePath(QStringLiteral("no/such/dir/s.txt"))));
}

void TestScenarioFile::damaged_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QList<double>>("depths");
    QTest::addColumn<QStringList>("names");

    const QByteArray body = fixture().mid(kBanner.size());
    const QByteArray header = body.left(8 * 30);
    const QList<QByteArray> lines = body.mid(8 * 30).split('\n');
    const QByteArray top = lines[0] + '\n';
    const QByteArray crest = lines[1] + '\n';
    const QList<double> both{1200.5, 1234.57};
    const QStringList bothNames{"Top_Reservoir", "Crest"};

    QTest::newRow("intact") << kBanner + header + top + crest << both << bothNames;
    QByteArray crlf = kBanner + header + top + crest;
    crlf.replace("\n", "\r\n");
    QTest::newRow("CRLF line ends") << crlf << both << bothNames;
    QTest::newRow("no final newline") << kBanner + header + top + lines[1] << both << bothNames;
    QTest::newRow("missing field skipped")
        << kBanner + header + top + "  0  1300  6  #FF0000  12.5  Short\n" + crest << both << bothNames;
    QTest::newRow("extra blanks and tabs")
        << kBanner + header + "\t\t 1   1300 \t 6   #00FF00   1   2     Wide   \n" + crest
        << QList<double>{1300, 1234.57} << QStringList{"Wide", "Crest"};
    QTest::newRow("unpadded line shifts and is lost")
        << kBanner + header + "0 1300 6 #FF0000 1 2 Name\n" + crest << QList<double>{1234.57} << QStringList{"Crest"};
    QTest::newRow("depth not a number reads as 0")
        << kBanner + header + " 0 deep 6 #FF0000 1 2 Bad\n" + top << QList<double>{0, 1200.5}
        << QStringList{"Bad", "Top_Reservoir"};
    QTest::newRow("infinite depth kept")
        << kBanner + header + " 0 -inf 6 #FF0000 1 2 Deep\n" + top << QList<double>{-qInf(), 1200.5}
        << QStringList{"Deep", "Top_Reservoir"};
    QTest::newRow("other bad numbers read as 0")
        << kBanner + header + " x 1300 t #FF0000 d a Odd\n" << QList<double>{1300} << QStringList{"Odd"};
    QTest::newRow("duplicate names kept")
        << kBanner + header + top + top << QList<double>{1200.5, 1200.5}
        << QStringList{"Top_Reservoir", "Top_Reservoir"};
    QTest::newRow("empty line ends the list") << kBanner + header + top + "\n" + crest << QList<double>{1200.5}
                                              << QStringList{"Top_Reservoir"};
    QTest::newRow("banner and header only") << kBanner + header << QList<double>{} << QStringList{};
    QTest::newRow("one line only") << QByteArray("garbage") << QList<double>{} << QStringList{};
    QTest::newRow("empty") << QByteArray() << QList<double>{} << QStringList{};
    QByteArray junk;
    std::mt19937 rng(3);
    for (int i = 0; i < 4096; ++i) {
        const char c = char(rng() & 0xff);
        // No white space, so that the junk is one token (0xC2 leads the UTF-8 of wide blanks).
        junk.append(QByteArray(" \t\n\v\f\r\xc2\xe2\xe3").contains(c) ? 'x' : c);
    }
    QTest::newRow("binary junk between") << kBanner + header + top + junk + "\n" + crest << both << bothNames;
    QTest::newRow("junk in eight fields kept") << kBanner + header + top + " " + junk.left(9) + " ~ x\xff y z w Junk\n"
                                               << QList<double>{1200.5, 0} << QStringList{"Top_Reservoir", "Junk"};
    QTest::newRow("10 MB line") << kBanner + header + top + QByteArray(10 * 1024 * 1024, 'z') + "\n" + crest << both
                                << bothNames;
    QTest::newRow("10 MB of blanks") << kBanner + header + top + QByteArray(10 * 1024 * 1024, ' ') + "\n" + crest
                                     << both << bothNames;
}

void TestScenarioFile::damaged()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QList<double>, depths);
    QFETCH(QStringList, names);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("s.txt"));
    QVERIFY(writeBytes(path, bytes));
    DLF f(QStringLiteral("S"));
    f.read(path);
    QCOMPARE(QList<double>(f.lineDepths().begin(), f.lineDepths().end()), depths);
    QCOMPARE(QStringList(f.lineNames().begin(), f.lineNames().end()), names);
    QCOMPARE(f.lineTypes().size(), f.lineDepths().size());
}

// A type number outside the table is no reason to lose it: it comes back as it was written.
void TestScenarioFile::typeNumbersKept()
{
    const QByteArray header = fixture().mid(kBanner.size(), 8 * 30);
    DLF f(QStringLiteral("S"));
    f.readFromText(QString::fromUtf8(kBanner + header + " 0 10 9 #FF0000 1 2 A\n 0 20 -2 #FF0000 1 2 B\n"
                                     + " 0 30 five #FF0000 1 2 C\n"));
    QCOMPARE(f.lineTypes().size(), std::size_t(3));
    QCOMPARE(int(f.lineTypes()[0]), 9);
    QCOMPARE(int(f.lineTypes()[1]), -2);
    QCOMPARE(int(f.lineTypes()[2]), 0); // not a number: 0
    const QStringList lines = f.writeToText().split(QLatin1Char('\n'));
    QCOMPARE(lines[2].mid(60, 30).trimmed(), QStringLiteral("9"));
    QCOMPARE(lines[3].mid(60, 30).trimmed(), QStringLiteral("-2"));
    QCOMPARE(DLF::type(f.lineTypes()[0]), QStringLiteral("Horizon"));
}

// Random scenarios written and read back: the numbers keep six significant digits, blanks in
// names become underscores, colours lose their alpha, types stay.
void TestScenarioFile::roundTrip()
{
    std::mt19937 rng(20260);
    std::uniform_real_distribution<double> depth(-5000.0, 50000.0);
    std::uniform_real_distribution<double> angle(0.0, 360.0);
    std::uniform_int_distribution<int> type(0, 6);
    std::uniform_int_distribution<int> byte(0, 255);
    const QString alphabet = QStringLiteral("abc XYZ_09\t\u00e9");
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("s.txt"));
    for (int round = 0; round < 40; ++round) {
        DLF out(QStringLiteral("S"));
        const int lines = round % 13;
        for (int i = 0; i < lines; ++i) {
            QString name;
            const int length = int(rng() % 40); // some fill the whole column
            for (int c = 0; c < length; ++c)
                name += alphabet[int(rng() % unsigned(alphabet.size()))];
            out.insertHorizontalLine(depth(rng) / 7.0, depth(rng), name, QColor(byte(rng), byte(rng), byte(rng)),
                                     DLF::DataType(type(rng)), 1e-3, QPointF(angle(rng) / 4.0, angle(rng)), i);
        }
        out.write(path);
        DLF in(QStringLiteral("S"));
        in.read(path);
        const auto six = [](double v) { return QString::number(v, 'g', 6).toDouble(); };
        QCOMPARE(in.lineDepths().size(), out.lineDepths().size());
        for (std::size_t i = 0; i < out.lineDepths().size(); ++i) {
            QCOMPARE(in.lineDepths()[i], six(out.lineDepths()[i]));
            QCOMPARE(in.linesX()[i], six(out.linesX()[i]));
            QCOMPARE(in.lineOrientations()[i], QPointF(six(out.lineOrientations()[i].x()),
                                                       six(out.lineOrientations()[i].y())));
            const DLF::DataType t = out.lineTypes()[i];
            QCOMPARE(in.lineTypes()[i], t);
            QCOMPARE(in.lineColors()[i].rgb(), out.lineColors()[i].rgb());
            QString name = out.lineNames()[i];
            name.replace(QLatin1Char(' '), QLatin1Char('_')).replace(QLatin1Char('\t'), QLatin1Char('_'));
            QCOMPARE(in.lineNames()[i], name);
        }
        // Written again, the file is the same: the text is a fixed point after one trip.
        const QString once = in.writeToText();
        DLF again(QStringLiteral("S"));
        again.readFromText(once);
        QCOMPARE(again.writeToText(), once);
    }
}

QTEST_GUILESS_MAIN(TestScenarioFile)
#include "tst_scenariofile.moc"
