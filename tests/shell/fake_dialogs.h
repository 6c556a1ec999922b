// The dialogs of the application, worked on by functions of a test in place of a user. A dialog
// that opens without the test having a function for it fails the test and ends as cancelled.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "shell/dialog_host.h"

namespace carnetel {

class FakeDialogs : public DialogHost {
 public:
  std::function<bool(FilePicker&)> file_picker;
  std::function<bool(DescriptionForm&)> description;
  std::function<bool(PreferencesForm&)> preferences;
  std::function<InvalidFileEnd(InvalidFileForm&)> invalid_file;
  // Runs while the box that asks for patience is up.
  std::function<void()> while_patience;
  int abouts = 0;
  int patience_boxes = 0;
  bool patience_shown = false;
  std::vector<int> help_topics;

  bool RunFilePicker(FilePicker& picker) override { return Run(file_picker, picker, "file"); }
  bool RunDescription(DescriptionForm& form) override {
    return Run(description, form, "description");
  }
  bool RunPreferences(PreferencesForm& form) override {
    return Run(preferences, form, "preferences");
  }
  InvalidFileEnd RunInvalidFile(InvalidFileForm& form) override {
    return Run(invalid_file, form, "invalid file");
  }
  void ShowAbout() override { ++abouts; }
  void ShowPatience(bool shown) override {
    patience_shown = shown;
    if (!shown) return;
    ++patience_boxes;
    if (while_patience) while_patience();
  }
  void ShowHelp(int topic) override { help_topics.push_back(topic); }

 private:
  template <class Result, class Form>
  Result Run(const std::function<Result(Form&)>& user, Form& form, const char* dialog) {
    if (user) return user(form);
    ADD_FAILURE() << "no answer for the dialog: " << dialog;
    return Result{};
  }
};

}  // namespace carnetel
