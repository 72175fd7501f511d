#pragma once

#include "printing/ReportLayout.h"

#include <QWidget>

#include <map>
#include <optional>

class QAction;
class QLabel;
class QPrinter;

namespace velmora {
class Prompts;
}

namespace velmora::ui {

// Prints the report's pages on a printer, laid out for its paper; the printer's page range,
// if set, chooses the pages. False when the printer can't be painted on.
bool printReport(const printing::Report& report, QPrinter& printer);

// The paper of a printer in twips, as its orientation has it.
QSize paperTwips(const QPrinter& printer);

class PageView;

// The preview of a report: a modeless window, opened at once, titled with the report's
// caption. The user pages through it, zooms, and prints, always through the print dialog of
// Prompts and our own painter. Only the page in sight is painted. It keeps the report, and
// so its rows, until it closes.
class ReportPreview : public QWidget {
    Q_OBJECT

public:
    ReportPreview(Prompts& prompts, printing::Report report, QWidget* parent);
    ~ReportPreview() override;

    const printing::Report& report() const { return m_report; }
    // The pages as this preview shows them; fails when the report can't be laid out.
    const printing::LaidOutReport& pages();
    // 1-based; the number of pages shown (0 when there are none).
    int currentPage() const { return m_current; }
    int pageCount();
    void showPage(int page);
    // The print button: the print dialog, then the chosen printer or file. A failure to print
    // is reported; a cancel says nothing.
    void printFromPreview();
    QAction* printAction() const { return m_print; }

signals:
    // The preview is closing: the report's rows may go.
    void closing();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // The pages shown, or none when the report couldn't be laid out.
    const printing::LaidOutReport* shown();
    void updatePageControls();
    QAction* addCommand(const QString& text, const QKeySequence& keys, void (ReportPreview::*slot)());
    void firstPage();
    void previousPage();
    void nextPage();
    void lastPage();
    void fitWidth();
    void fitPage();
    void zoomIn();
    void zoomOut();

    Prompts& m_prompts;
    printing::Report m_report;
    QSize m_paper;
    std::optional<printing::LaidOutReport> m_laidOut;
    bool m_layoutFailed = false;
    int m_current = 1;
    PageView* m_view = nullptr;
    QLabel* m_pageLabel = nullptr;
    QAction* m_first = nullptr;
    QAction* m_previous = nullptr;
    QAction* m_next = nullptr;
    QAction* m_last = nullptr;
    QAction* m_print = nullptr;
    bool m_closed = false;
};

// How each report opens: an earlier preview of the same report beside `parent` closes
// first; the new one is deleted when it closes.
ReportPreview* replacePreview(Prompts& prompts, printing::Report report, QWidget* parent);
// Sizes a preview to its screen, at most 1000 pixels wide and nine tenths of the height, and
// shows it.
void showPreview(ReportPreview& preview, QWidget* parent);

} // namespace velmora::ui
