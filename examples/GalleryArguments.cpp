#include "GalleryArguments.h"

#include "CsvSheetReader.h"

#include <cstdio>

void GalleryArguments::useOffscreenUnlessSet()
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

bool GalleryArguments::parse(const QStringList& args, const char* program, const QString& defaultData)
{
    if (args.size() < 2) {
        std::fprintf(stderr, "usage: %s OUT_DIR [--data FILE.csv]\n", program);
        return false;
    }
    out = QDir(args.at(1));
    data = defaultData;
    const int dataArg = args.indexOf(QStringLiteral("--data"));
    if (dataArg > 0 && dataArg + 1 < args.size())
        data = args.at(dataArg + 1);
    CsvSheetReader reader;
    sheet.reset(reader.read(data, QStringLiteral("Well")));
    return true;
}
