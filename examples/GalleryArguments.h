#pragma once
// The command line the gallery programs share, `PROGRAM OUT_DIR [--data FILE.csv]`, and the
// sheet it names (the bundled sample well unless --data says otherwise). They render off screen.

#include <MatrixData.h>

#include <QDir>
#include <QString>
#include <QStringList>

#include <memory>

struct GalleryArguments {
    QDir out;
    QString data;
    std::unique_ptr<rkBase::MatrixData> sheet;

    // Before the QApplication: off screen unless the caller chose a platform.
    static void useOffscreenUnlessSet();
    // False (after printing the usage) when OUT_DIR is missing. The sheet may still be null when
    // the file cannot be read; each program says which columns it missed.
    bool parse(const QStringList& args, const char* program, const QString& defaultData);
};
