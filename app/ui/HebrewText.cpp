#include "app/ui/HebrewText.h"

#include "app/TextDirection.h"

#include <QAbstractButton>
#include <QAction>
#include <QLabel>

namespace velmora::ui {

QString hebrewParagraph(const QString& text)
{
    return displayedText(text);
}

void setHebrewText(QLabel* label, const QString& text)
{
    label->setTextFormat(Qt::PlainText);
    label->setText(hebrewParagraph(text));
}

void setHebrewText(QAction* action, const QString& text)
{
    action->setText(hebrewParagraph(text));
}

void setHebrewText(QAbstractButton* button, const QString& text)
{
    button->setText(hebrewParagraph(text));
}

void setHebrewTitle(QWidget* window, const QString& text)
{
    window->setWindowTitle(hebrewParagraph(text));
}

} // namespace velmora::ui
