#include "app/ui/QtPrompts.h"

#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>

namespace velmora::ui {

namespace {

QString caption(const QString& title)
{
    return title.isEmpty() ? DefaultCaption : title;
}

// CrLf joins the lines of messages; a bare CR would show as a box glyph here.
QString displayed(QString text)
{
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(u'\r', u'\n');
    return text;
}

QMessageBox::StandardButton standard(PromptAnswer answer)
{
    switch (answer) {
    case PromptAnswer::Ok:
        return QMessageBox::Ok;
    case PromptAnswer::Cancel:
        return QMessageBox::Cancel;
    case PromptAnswer::Yes:
        return QMessageBox::Yes;
    case PromptAnswer::No:
        return QMessageBox::No;
    }
    return QMessageBox::Ok;
}

QString startPath(const FileRequest& request)
{
    if (request.fileName.isEmpty())
        return request.initialDir;
    if (request.initialDir.isEmpty())
        return request.fileName;
    return QDir(request.initialDir).filePath(request.fileName);
}

} // namespace

PromptAnswer QtPrompts::show(const MessageRequest& request)
{
    QMessageBox box(m_parent);
    box.setLayoutDirection(request.leftToRight ? Qt::LeftToRight : Qt::RightToLeft);
    box.setWindowTitle(caption(request.title));
    box.setText(displayed(request.text));
    switch (request.icon) {
    case PromptIcon::None:
        box.setIcon(QMessageBox::NoIcon);
        break;
    case PromptIcon::Information:
        box.setIcon(QMessageBox::Information);
        break;
    case PromptIcon::Warning:
        box.setIcon(QMessageBox::Warning);
        break;
    case PromptIcon::Critical:
        box.setIcon(QMessageBox::Critical);
        break;
    case PromptIcon::Question:
        box.setIcon(QMessageBox::Question);
        break;
    }
    switch (request.buttons) {
    case PromptButtons::Ok:
        box.setStandardButtons(QMessageBox::Ok);
        break;
    case PromptButtons::OkCancel:
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        break;
    case PromptButtons::YesNo:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        break;
    case PromptButtons::YesNoCancel:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        break;
    }
    box.setDefaultButton(standard(request.defaultButton));
    switch (box.exec()) {
    case QMessageBox::Yes:
        return PromptAnswer::Yes;
    case QMessageBox::No:
        return PromptAnswer::No;
    case QMessageBox::Cancel:
        return PromptAnswer::Cancel;
    default:
        return request.buttons == PromptButtons::Ok ? PromptAnswer::Ok
               : request.buttons == PromptButtons::OkCancel ? PromptAnswer::Ok
                                                             : PromptAnswer::Cancel;
    }
}

QString QtPrompts::inputBox(const InputRequest& request)
{
    QInputDialog dialog(m_parent);
    dialog.setLayoutDirection(Qt::RightToLeft);
    dialog.setWindowTitle(caption(request.title));
    dialog.setLabelText(displayed(request.prompt));
    dialog.setTextValue(request.defaultAnswer);
    return dialog.exec() == QDialog::Accepted ? dialog.textValue() : QString();
}

PromptResult<QString> QtPrompts::openFile(const FileRequest& request)
{
    const QString path = QFileDialog::getOpenFileName(m_parent, request.title, startPath(request),
                                                      qtFileFilter(request.filter));
    if (path.isEmpty())
        return PromptResult<QString>::cancelled();
    return {path, {}};
}

PromptResult<QString> QtPrompts::saveFile(const FileRequest& request)
{
    const QString path = QFileDialog::getSaveFileName(m_parent, request.title, startPath(request),
                                                      qtFileFilter(request.filter));
    if (path.isEmpty())
        return PromptResult<QString>::cancelled();
    return {path, {}};
}

PromptResult<QColor> QtPrompts::chooseColour(const QColor& initial)
{
    const QColor colour = QColorDialog::getColor(initial, m_parent);
    if (!colour.isValid())
        return PromptResult<QColor>::cancelled();
    return {colour, {}};
}

PromptResult<PrinterRequest> QtPrompts::choosePrinter(const PrinterRequest& proposal)
{
    QPrinter printer(QPrinter::HighResolution);
    if (!proposal.printerName.isEmpty())
        printer.setPrinterName(proposal.printerName);
    if (!proposal.outputFile.isEmpty())
        printer.setOutputFileName(proposal.outputFile);
    printer.setCopyCount(proposal.copies);
    if (proposal.paper.isValid())
        printer.setPageSize(proposal.paper);
    printer.setDuplex(QPrinter::DuplexMode(proposal.duplex));
    printer.setColorMode(proposal.grayscale ? QPrinter::GrayScale : QPrinter::Color);
    printer.setCollateCopies(proposal.collate);
    printer.setPageOrientation(proposal.landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    if (proposal.fromPage > 0)
        printer.setFromTo(proposal.fromPage, proposal.toPage);
    QPrintDialog dialog(&printer, m_parent);
    dialog.setLayoutDirection(Qt::RightToLeft);
    if (proposal.maxPage > 0)
        dialog.setMinMax(1, proposal.maxPage);
    if (dialog.exec() != QDialog::Accepted)
        return PromptResult<PrinterRequest>::cancelled();
    PrinterRequest chosen = proposal;
    chosen.printerName = printer.printerName();
    chosen.outputFile = printer.outputFileName();
    chosen.copies = printer.copyCount();
    chosen.fromPage = printer.fromPage();
    chosen.toPage = printer.toPage();
    chosen.landscape = printer.pageLayout().orientation() == QPageLayout::Landscape;
    chosen.paper = printer.pageLayout().pageSize();
    chosen.duplex = PrinterDuplex(printer.duplex());
    chosen.grayscale = printer.colorMode() == QPrinter::GrayScale;
    chosen.collate = printer.collateCopies();
    return {chosen, {}};
}

void QtPrompts::beep()
{
    QApplication::beep();
}

} // namespace velmora::ui
