#pragma once
// A well's report in one go: every chart tab of the host's analyser rendered to pictures (PNG
// for the page, SVG and EMF beside each), the stereonet's statistics report and the histogram's
// two-sample results, gathered into DIR/index.html with the data file's name, its row count and
// the date. The page uses relative links only, so the directory can be handed on as it is.

#include <QList>
#include <QSize>
#include <QString>
#include <QStringList>

#include <cstdio>

class HostMainWindow;

class ChartReport
{
public:
    ChartReport(HostMainWindow& window, const QString& dataFile);

    // The size the window is rendered at (the charts share it with the side panels).
    void setWindowSize(const QSize& size) { m_windowSize = size; }
    // Where the line per chart goes while the report is written; null for none.
    void setProgress(std::FILE* stream) { m_progress = stream; }

    // Writes the report into dir (made if missing). False, with a message, when the directory
    // or a file cannot be written or no tab shows a chart.
    bool write(const QString& dir, QString* error);

    // The page of a written report as a reader sees it (Qt's rich text), width pixels wide, into
    // a PNG; for showing the page where no browser runs.
    static bool renderPage(const QString& dir, const QString& png, int width, QString* error);

    // The files of the last write(), by name within the directory (index.html last).
    const QStringList& files() const { return m_files; }

private:
    struct Chart {
        QString key;
        QString title;
        QString base; // file name without suffix
    };
    bool renderCharts(const QString& dir, QList<Chart>& charts, QString* error);
    QString statisticsHtml() const;
    QString twoSampleHtml() const;
    // The pictures go into the page itself, each linked to its file: the page alone can be
    // handed on, and the folder gives the vector forms beside it.
    QString pageHtml(const QString& dir, const QList<Chart>& charts) const;
    void settle() const;

    HostMainWindow& m_window;
    QString m_dataFile;
    QSize m_windowSize{1400, 900};
    std::FILE* m_progress = stderr;
    QStringList m_files;
};
