#include "app/ui/QtPrompts.h"

#include "app/ui/HebrewText.h"

#include <QAbstractButton>
#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QLabel>
#include <QInputDialog>
#include <QMessageBox>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QProxyStyle>
#include <QStyleFactory>

namespace velmora::ui {

namespace {

QString caption(const QString& title)
{
    return hebrewParagraph(title.isEmpty() ? DefaultCaption : title);
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

// A combo box paints its label in the application's direction, whatever its own: this one
// paints it in the box's.
class LabelInOwnDirection : public QProxyStyle {
public:
    using QProxyStyle::QProxyStyle;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override
    {
        if (element == CE_ComboBoxLabel && widget)
            painter->setLayoutDirection(widget->layoutDirection());
        QProxyStyle::drawControl(element, option, painter, widget);
    }
};

// The dialog stays right to left; the places that show paths and file names read left to
// right, where a right-to-left paragraph would move a path's leading "/" to its end.
PromptResult<QString> runFileDialog(QWidget* parent, const FileRequest& request, QFileDialog::AcceptMode mode)
{
    LabelInOwnDirection folderStyle(QStyleFactory::create(QApplication::style()->name())); // outlives the dialog
    QFileDialog dialog(parent, request.title, startPath(request), qtFileFilter(request.filter));
    dialog.setAcceptMode(mode);
    // An open dialog too returns a typed name that isn't there: the caller says so in its own words.
    dialog.setFileMode(QFileDialog::AnyFile);
    // The program asks its own overwrite question where it has one.
    if (!request.confirmOverwrite)
        dialog.setOption(QFileDialog::DontConfirmOverwrite);
    for (const char* name : {"lookInCombo", "fileNameEdit", "listView", "treeView", "sidebar"}) {
        if (auto* widget = dialog.findChild<QWidget*>(QLatin1String(name)))
            widget->setLayoutDirection(Qt::LeftToRight);
    }
    if (auto* folder = dialog.findChild<QWidget*>(QStringLiteral("lookInCombo")))
        folder->setStyle(&folderStyle);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return PromptResult<QString>::cancelled();
    return {dialog.selectedFiles().constFirst(), {}};
}

} // namespace

QWidget* QtPrompts::owner() const
{
    if (QWidget* active = QApplication::activeWindow())
        m_lastOwner = active;
    if (m_lastOwner && m_lastOwner->isVisible())
        return m_lastOwner;
    return m_parent;
}

PromptAnswer QtPrompts::show(const MessageRequest& request)
{
    // A box stands over the window the user works in (the ledger, the dialer), not the list.
    QMessageBox box(owner());
    box.setLayoutDirection(request.leftToRight ? Qt::LeftToRight : Qt::RightToLeft);
    box.setWindowTitle(caption(request.title));
    // Plain text, one paragraph per line, each in its own direction: a screen reader
    // hears the text itself, not markup.
    box.setTextFormat(Qt::PlainText);
    box.setText(hebrewParagraph(request.text));
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
    if (request.leftToRight) {
        // "click OK" must name the button: English boxes keep English buttons.
        const std::pair<QMessageBox::StandardButton, const char*> english[] = {
            {QMessageBox::Ok, "OK"}, {QMessageBox::Cancel, "Cancel"}, {QMessageBox::Yes, "Yes"}, {QMessageBox::No, "No"}};
        for (const auto& [button, text] : english) {
            if (QAbstractButton* shown = box.button(button))
                shown->setText(QString::fromLatin1(text));
        }
    }
    box.setDefaultButton(standard(request.defaultButton));
    // A short text makes a narrow box whose title the window manager cuts ("Ve…ora"):
    // a spacer keeps room for the whole title beside the frame's buttons, and the text
    // keeps to the box's reading side when the box is wider than it.
    if (auto* grid = qobject_cast<QGridLayout*>(box.layout())) {
        const int titleWidth = box.fontMetrics().horizontalAdvance(box.windowTitle()) + 160;
        grid->addItem(new QSpacerItem(titleWidth, 0, QSizePolicy::Minimum, QSizePolicy::Fixed), grid->rowCount(), 0, 1,
                      grid->columnCount());
    }
    if (auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) {
        label->setSizePolicy(QSizePolicy::Expanding, label->sizePolicy().verticalPolicy());
        label->setAlignment((request.leftToRight ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignAbsolute | Qt::AlignVCenter);
    }
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
    QInputDialog dialog(owner());
    dialog.setLayoutDirection(Qt::RightToLeft);
    dialog.setWindowTitle(caption(request.title));
    dialog.setLabelText(hebrewParagraph(request.prompt));
    dialog.setTextValue(request.defaultAnswer);
    return dialog.exec() == QDialog::Accepted ? dialog.textValue() : QString();
}

PromptResult<QString> QtPrompts::openFile(const FileRequest& request)
{
    return runFileDialog(owner(), request, QFileDialog::AcceptOpen);
}

PromptResult<QString> QtPrompts::saveFile(const FileRequest& request)
{
    return runFileDialog(owner(), request, QFileDialog::AcceptSave);
}

PromptResult<QColor> QtPrompts::chooseColour(const QColor& initial)
{
    const QColor colour = QColorDialog::getColor(initial, owner());
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
    QPrintDialog dialog(&printer, owner());
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
