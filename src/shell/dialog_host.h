// The dialogs that the application opens, as it asks for them: each has its rules in a form object
// of its own, which the front end shows and works on. A test answers in place of the user.
#pragma once

#include <cstdint>

namespace carnetel {

class DescriptionForm;
class FilePicker;
class InvalidFileForm;
class PreferencesForm;

// How the dialog about a file that is no directory ends; the numbers are those it answers.
enum class InvalidFileEnd { kClosed = 0, kCreate = 2, kLoad = 3, kRecovered = 4 };

class DialogHost {
 public:
  virtual ~DialogHost() = default;

  // Each shows the dialog and returns when it has ended: true when the user confirmed it.
  virtual bool RunFilePicker(FilePicker& picker) = 0;
  virtual bool RunDescription(DescriptionForm& form) = 0;
  virtual bool RunPreferences(PreferencesForm& form) = 0;
  virtual InvalidFileEnd RunInvalidFile(InvalidFileForm& form) = 0;
  virtual void ShowAbout() = 0;
  // The box that asks for patience, without a button; it stays until it is hidden.
  virtual void ShowPatience(bool shown) = 0;
  // A page of the help, above whatever is open.
  virtual void ShowHelp(int topic) = 0;
};

}  // namespace carnetel
