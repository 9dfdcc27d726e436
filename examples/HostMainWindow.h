#pragma once
// The demo host: a main window around one analyser, with the file, edit and view commands a
// host application gives its users. It owns the unit registry and walks the root's undo list.

#include <QMainWindow>

class QAction;

namespace rkBase {
class QDataAnalyserDialog;
class QModifyCellsDialog;
class UnitRegistry;
}

class HostMainWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit HostMainWindow(QWidget* parent = nullptr);
    ~HostMainWindow() override;

    // Loads a CSV as a new sheet; problems go to one message box unless quiet.
    bool openCsv(const QString& fileName, bool quiet);
    rkBase::QDataAnalyserDialog* analyser() const { return m_analyser; }
    // Brings the tab of a key ("TABLE", "BARCHART", ...) to the front; false for a key that has
    // no tab in this window.
    bool showTab(const QString& key);
    // Selects table rows first..last (counted from 1, as the table shows them), as a selection
    // made on a chart would; false when the range holds no row of the sheet.
    bool selectRows(int first, int last);

public slots:
    void openCsvDialog();
    void saveAs();
    void showModifyCells();
    void modifyCells();
    void insertRow();
    void deleteRows();
    void undo();
    void redo();
    void copy();
    void paste();
    void setLightMode(bool on);
    void updateUndoActions();

private:
    rkBase::UnitRegistry* m_registry;
    rkBase::QDataAnalyserDialog* m_analyser;
    rkBase::QModifyCellsDialog* m_modifyCells = nullptr;
    QAction* m_undo = nullptr;
    QAction* m_redo = nullptr;
};
