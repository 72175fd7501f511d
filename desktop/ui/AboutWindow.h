#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

namespace velmora {
class Prompts;
}

namespace velmora::desktop::ui {

// frmAbout: title, version, description, the two links and the system information button.
// Made anew for each opening and shown modally.
class AboutWindow : public QDialog {
    Q_OBJECT

public:
    explicit AboutWindow(Prompts& prompts, QWidget* parent = nullptr);

    QLabel* lblWeb() const { return m_web; }
    QLabel* lblMail() const { return m_mail; }

private:
    QLabel* link(const QString& name, const QString& address, quint8 kind);

    Prompts& m_prompts;
    QLabel* m_web = nullptr;
    QLabel* m_mail = nullptr;
};

} // namespace velmora::desktop::ui
