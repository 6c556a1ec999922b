// The dialogs of the application, worked on by functions of a test in place of a user. A dialog
// that opens without the test having a function for it fails the test and ends as cancelled.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "selection/criteria_form.h"
#include "selection/groups_form.h"
#include "shell/dialog_host.h"
#include "shell/search_form.h"
#include "tests/support/fake_printers.h"

namespace carnetel {

class FakeDialogs : public DialogHost {
 public:
  std::function<bool(FilePicker&)> file_picker;
  std::function<bool(DescriptionForm&)> description;
  std::function<bool(PreferencesForm&)> preferences;
  std::function<InvalidFileEnd(InvalidFileForm&)> invalid_file;
  std::function<CriteriaEnd(CriteriaForm&)> criteria;
  std::function<int(NamedSetsForm&)> named_sets;
  std::function<int(GroupsForm&)> groups;
  std::function<int(SearchForm&)> search;
  std::function<bool(NumberForm&)> number;
  std::function<int(TransferForm&)> transfer;
  std::function<int(RankForm&)> ranks;
  std::function<int(FixedLayoutForm&)> fixed_layout;
  std::function<int(DbaseImportForm&)> dbase_import;
  std::function<int(DbaseExportForm&)> dbase_export;
  std::function<int(PrintForm&)> print;
  std::function<bool(PrinterChoiceForm&)> printer_choice;
  FakePrinters printers;
  std::function<int(EnrichmentForm&)> enrichment;
  std::function<bool(ViafaxOptionForm&)> viafax_option;
  // What the dialog about a destination that is there answers, in order.
  std::deque<std::optional<bool>> replaces;
  // What the dialogs for a name and for a group answer, in order.
  std::deque<std::optional<std::string>> names;
  std::deque<std::optional<GroupDescription>> group_descriptions;
  // What they offered.
  std::vector<std::string> names_offered;
  std::vector<GroupDescription> groups_offered;
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
  CriteriaEnd RunCriteria(CriteriaForm& form) override { return Run(criteria, form, "criteria"); }
  void RunNamedSets(SetsDialog, NamedSetsForm& form) override { Run(named_sets, form, "sets"); }
  std::optional<std::string> AskName(SetsDialog, const std::string& offered) override {
    names_offered.push_back(offered);
    return Take(names);
  }
  void RunGroups(GroupsForm& form) override { Run(groups, form, "groups"); }
  std::optional<GroupDescription> AskGroup(const GroupDescription& offered) override {
    groups_offered.push_back(offered);
    return Take(group_descriptions);
  }
  void RunSearch(SearchForm& form) override { Run(search, form, "search"); }
  bool RunNumber(NumberForm& form) override { return Run(number, form, "number"); }
  void RunTransfer(TransferForm& form) override { Run(transfer, form, "transfer"); }
  void RunRanks(RankForm& form) override { Run(ranks, form, "ranks"); }
  void RunFixedLayout(FixedLayoutForm& form) override { Run(fixed_layout, form, "fixed layout"); }
  void RunDbaseImport(DbaseImportForm& form) override { Run(dbase_import, form, "dBase import"); }
  void RunDbaseExport(DbaseExportForm& form) override { Run(dbase_export, form, "dBase export"); }
  std::optional<bool> AskReplace(bool) override { return Take(replaces); }
  void RunPrint(PrintForm& form) override { Run(print, form, "print"); }
  bool RunPrinterChoice(PrinterChoiceForm& form) override {
    return Run(printer_choice, form, "printer choice");
  }
  PrinterPort& Printers() override { return printers; }
  bool RunViafaxOption(ViafaxOptionForm& form) override {
    return Run(viafax_option, form, "Viafax option");
  }
  void RunEnrichment(EnrichmentForm& form) override { Run(enrichment, form, "enrichment"); }
  void ShowAbout() override { ++abouts; }
  void ShowPatience(bool shown) override {
    patience_shown = shown;
    if (!shown) return;
    ++patience_boxes;
    if (while_patience) while_patience();
  }
  void ShowHelp(int topic) override { help_topics.push_back(topic); }

 private:
  template <class Answer>
  static Answer Take(std::deque<Answer>& answers) {
    if (answers.empty()) return {};
    Answer answer = answers.front();
    answers.pop_front();
    return answer;
  }

  template <class Result, class Form>
  Result Run(const std::function<Result(Form&)>& user, Form& form, const char* dialog) {
    if (user) return user(form);
    ADD_FAILURE() << "no answer for the dialog: " << dialog;
    return Result{};
  }
};

}  // namespace carnetel
