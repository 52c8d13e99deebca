#pragma once

#include "base/text.h"
#include <QDialog>

class QPushButton;

namespace tracksmith::forms {

/// A dialog over `window` with an empty column of widgets; deletes itself when it is closed.
QDialog* NewDialog(QWidget* window, const char* objectName, const QString& title);

/// Gives an empty dialog or page its column of widgets with the program's margins.
void AddColumn(QWidget& page);

/// A button of a dialog, which Enter does not press unless it has the keyboard.
QPushButton* NewButton(const char* objectName, const QString& text);

/// Adds a row with the button "Btn_Close", which closes the dialog, to the dialog's column.
void AddCloseButton(QDialog& dialog, Language language);

/// Adds a line of plain text to the dialog's column, `size` times as large as others.
void AddLine(QDialog& dialog, const char* objectName, const QString& text, double size = 1);

} // namespace tracksmith::forms
