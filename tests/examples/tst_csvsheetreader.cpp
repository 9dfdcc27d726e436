// The demo host's CSV loading: what a person's file can throw at it.
#include <CsvSheetReader.h>
#include <MatrixData.h>

#include <QtTest>

#include <memory>

using rkBase::MatrixData;

class TestCsvSheetReader : public QObject
{
    Q_OBJECT
private slots:
    void parse_data();
    void parse();
    void typesAndProblems_data();
    void typesAndProblems();
    void latin1File();
    void missingFile();
};

void TestCsvSheetReader::parse_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<QStringList>>("records");
    QTest::newRow("plain, CRLF") << QStringLiteral("a,b\r\n1,2\r\n") << QList<QStringList>{{"a", "b"}, {"1", "2"}};
    QTest::newRow("LF, no final break") << QStringLiteral("a,b\n1,2") << QList<QStringList>{{"a", "b"}, {"1", "2"}};
    QTest::newRow("quoted comma and quote") << QStringLiteral("\"x,y\",\"say \"\"hi\"\"\"\n")
                                            << QList<QStringList>{{"x,y", "say \"hi\""}};
    QTest::newRow("quoted line break") << QStringLiteral("\"one\ntwo\",3\n") << QList<QStringList>{{"one\ntwo", "3"}};
    QTest::newRow("empty fields") << QStringLiteral(",,\n") << QList<QStringList>{{"", "", ""}};
    QTest::newRow("blank lines skipped") << QStringLiteral("a\n\n\nb\n") << QList<QStringList>{{"a"}, {"b"}};
    QTest::newRow("unclosed quote") << QStringLiteral("\"open,1\n2") << QList<QStringList>{{"open,1\n2"}};
    QTest::newRow("nothing") << QString() << QList<QStringList>{};
}

void TestCsvSheetReader::parse()
{
    QFETCH(QString, text);
    QFETCH(QList<QStringList>, records);
    QCOMPARE(CsvSheetReader::parse(text), records);
}

void TestCsvSheetReader::typesAndProblems_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("types");
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("problems");
    QTest::newRow("typed columns") << QStringLiteral("d,i,b,c,s\n1.5,2,true,#FF0000,x\n2,3,false,#00FF00,y\n")
                                   << QStringList{"Double", "Int", "Bool", "Color", "String"} << 2 << 0;
    QTest::newRow("ragged rows") << QStringLiteral("a,b\n1\n2,3,4\n") << QStringList{"Int", "Int"} << 2 << 1;
    QString mostlyNumbers = QStringLiteral("v\n");
    for (int i = 0; i < 40; ++i)
        mostlyNumbers += QString::number(i) + QLatin1Char('\n');
    mostlyNumbers += QStringLiteral("n/a\n");
    QTest::newRow("a stray word in numbers") << mostlyNumbers << QStringList{"Double"} << 41 << 1;
    QTest::newRow("header only") << QStringLiteral("a,b\n") << QStringList{"String", "String"} << 0 << 0;
    QTest::newRow("duplicate and empty names") << QStringLiteral("a,a,\n1,2,3\n") << QStringList{"Int", "Int", "Int"} << 1 << 0;
    QTest::newRow("empty") << QString() << QStringList{} << 0 << 1;
}

void TestCsvSheetReader::typesAndProblems()
{
    QFETCH(QString, text);
    QFETCH(QStringList, types);
    QFETCH(int, rows);
    QFETCH(int, problems);
    CsvSheetReader reader;
    std::unique_ptr<MatrixData> sheet(reader.readText(text, QStringLiteral("Sheet")));
    QCOMPARE(reader.problems().size(), problems);
    if (types.isEmpty()) {
        QVERIFY(!sheet);
        return;
    }
    QVERIFY(sheet);
    QCOMPARE(sheet->childCount(), types.size());
    QSet<QString> names;
    for (int c = 0; c < types.size(); ++c) {
        QCOMPARE(MatrixData::systemTypeName(sheet->child(c)->cellType()), types[c]);
        QCOMPARE(sheet->child(c)->validValueRowCount(), rows);
        names.insert(sheet->child(c)->name());
    }
    QCOMPARE(names.size(), types.size());
}

void TestCsvSheetReader::latin1File()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write("name,v\n\xD8resund,1\n"); // Latin-1, not UTF-8
    file.close();
    CsvSheetReader reader;
    std::unique_ptr<MatrixData> sheet(reader.read(file.fileName(), QStringLiteral("Sheet")));
    QVERIFY(sheet);
    QCOMPARE(sheet->child(0)->value(0, 0).toString(), QString::fromUtf8("Øresund"));
    QCOMPARE(reader.problems().size(), 1);
}

void TestCsvSheetReader::missingFile()
{
    CsvSheetReader reader;
    QVERIFY(!reader.read(QStringLiteral("/no/such/file.csv"), QStringLiteral("Sheet")));
    QCOMPARE(reader.problems().size(), 1);
}

QTEST_GUILESS_MAIN(TestCsvSheetReader)
#include "tst_csvsheetreader.moc"
