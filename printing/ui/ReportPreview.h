#pragma once

#include "printing/ReportLayout.h"

#include <QPrintPreviewDialog>

#include <map>
#include <memory>

namespace velmora {
class Prompts;
}

namespace velmora::ui {

// Prints the report's pages on a printer, laid out for its paper; the printer's page range,
// if set, chooses the pages. False when the printer can't be painted on.
bool printReport(const printing::Report& report, QPrinter& printer);

// The paper of a printer in twips, as its orientation has it.
QSize paperTwips(const QPrinter& printer);

// The preview of a report: modeless, opened at once, titled with the report's caption. The
// user pages through it, zooms, and prints, always through the print dialog of Prompts and our
// own painter. It keeps the report, and so its rows, until it closes.
class ReportPreview : public QPrintPreviewDialog {
    Q_OBJECT

public:
    ReportPreview(Prompts& prompts, printing::Report report, QWidget* parent);
    ~ReportPreview() override;

    void setReport(printing::Report report);
    const printing::Report& report() const { return m_report; }
    // The pages as this preview shows them.
    const printing::LaidOutReport& pages();
    // The print button: the print dialog, then the chosen printer or file. A failure to print
    // is reported; a cancel says nothing.
    void printFromPreview();
    // The preview's print button.
    static QAction* printAction(const QPrintPreviewDialog& dialog);

signals:
    // The preview is closing: the report's rows may go.
    void closing();

protected:
    void done(int result) override;

private:
    ReportPreview(std::unique_ptr<QPrinter> printer, Prompts& prompts, printing::Report report, QWidget* parent);
    void paintPages(QPrinter* printer);
    const printing::LaidOutReport& layoutFor(QSize paper);

    std::unique_ptr<QPrinter> m_printer;
    Prompts& m_prompts;
    printing::Report m_report;
    std::map<std::pair<int, int>, printing::LaidOutReport> m_layouts;
    bool m_closed = false;
};

} // namespace velmora::ui
