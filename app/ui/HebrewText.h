#pragma once

#include <QString>

class QAbstractButton;
class QAction;
class QLabel;
class QWidget;

namespace velmora::ui {

// Every Hebrew text a window shows goes through here, so that a line kept with its closing
// mark or a number first ("?האם…", ":קבוצת…", "...הגדרות") reads right to a Hebrew reader
// wherever it stands; texts that begin with a Hebrew letter come out as they were.
//   labels:         setHebrewText(label, text)
//   buttons:        setHebrewText(button, text)
//   menu entries:   setHebrewText(action, text), or menu->addAction(hebrewParagraph(text))
//   window titles:  setHebrewTitle(window, text)
//   tab captions, group boxes, anything else taking a string: hebrewParagraph(text)
// Message boxes and input boxes get it through the prompts (QtPrompts). Printed pages,
// laid out without widgets, take the same rule from app/TextDirection.h.
QString hebrewParagraph(const QString& text);
void setHebrewText(QLabel* label, const QString& text);
void setHebrewText(QAction* action, const QString& text);
void setHebrewText(QAbstractButton* button, const QString& text);
void setHebrewTitle(QWidget* window, const QString& text);

} // namespace velmora::ui
