// Radio buttons of a dialog: a titled box of them, named by their control numbers, whose chosen one
// is the stop of Tab.
#pragma once

#include <QButtonGroup>
#include <QGroupBox>
#include <QRadioButton>
#include <QString>
#include <functional>

namespace carnetel::desktop {

// A box whose radios lie below each other.
[[nodiscard]] QGroupBox* MakeRadioBox(const QString& title);

// `id` becomes the object name and the number within the group. `box` has a layout.
QRadioButton* AddRadio(QWidget* box, QButtonGroup* group, int id, const QString& text);

// Shows the radio of that number as the chosen one, none when there is no such radio, and from then
// on tells the number of each that the user chooses.
void ChooseRadio(QButtonGroup* group, int id, std::function<void(int)> chosen);

}  // namespace carnetel::desktop
