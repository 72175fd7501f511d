#pragma once

#include <QDialog>
#include <QListWidget>

#include <functional>

class QCheckBox;
class QLabel;
class QPushButton;

namespace velmora {
class Prompts;
struct WeddingState;
}

namespace velmora::printing::ui {

class Outline;

// What the print buttons build once the window is gone.
struct PrintCommands {
    std::function<void()> printLabels;
    std::function<void()> printNotes;
};

// The design list: typed keys pick nothing, the arrows still move.
class StyleList : public QListWidget {
    Q_OBJECT
public:
    using QListWidget::QListWidget;
    void keyboardSearch(const QString&) override {}
};

// frmPrint: the design of envelope labels (PrintPage 1) or of seating notes (PrintPage 2),
// with a small preview that follows every choice. It works on the shared state directly;
// only a print button stores the page's choices in the settings file.
class PrintDesignWindow : public QDialog {
    Q_OBJECT

public:
    PrintDesignWindow(WeddingState& state, Prompts& prompts, QWidget* parent = nullptr);

    // Shows the window modally on the page PrintPage names. After a print button the window
    // is unloaded first, then the page's report is built.
    static void open(WeddingState& state, Prompts& prompts, const PrintCommands& commands, QWidget* parent);

    // The page whose print button was pressed, 0 when none was.
    qint32 printed() const { return m_printed; }

private:
    void build();
    void Form_Load();
    void LoadStyles();
    void styleSelected();
    void chooseColour();
    void applyColour();
    void labelFrameClicked();
    void noteFrameClicked();
    void labelAddressClicked();
    void print(qint32 page);

    WeddingState& m_state;
    Prompts& m_prompts;
    qint32 m_printed = 0;
    // The colour dialog's own value: black until a colour was chosen in this window.
    QColor m_dialogColour = Qt::black;

    QWidget* m_framLabelPrint = nullptr;
    QWidget* m_framSittingNotePrint = nullptr;
    Outline* m_shpColor = nullptr;
    QCheckBox* m_chkLabelFrame = nullptr;
    QCheckBox* m_chkLabelAddress = nullptr;
    QCheckBox* m_chkNoteFrame = nullptr;
    Outline* m_shpLabelFrame = nullptr;
    Outline* m_shpNoteFrame = nullptr;
    Outline* m_lineNoteFrame = nullptr;
    QLabel* m_lblLabelName = nullptr;
    QLabel* m_lblLabelAddress = nullptr;
    QLabel* m_lblNoteName = nullptr;
    QLabel* m_lblNoteTable = nullptr;
    QLabel* m_imgBG = nullptr;
    StyleList* m_lstStyles = nullptr;
};

} // namespace velmora::printing::ui
