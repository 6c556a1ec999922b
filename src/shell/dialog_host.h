// The dialogs that the application opens, as it asks for them: each has its rules in a form object
// of its own, which the front end shows and works on. A test answers in place of the user.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace carnetel {

class CriteriaForm;
class DbaseExportForm;
class DbaseImportForm;
class DescriptionForm;
class EnrichmentForm;
class FilePicker;
class FixedLayoutForm;
class GroupsForm;
class InvalidFileForm;
class NamedSetsForm;
class NumberForm;
class PreferencesForm;
class PrintForm;
class PrinterChoiceForm;
class PrinterPort;
class RankForm;
class SearchForm;
class TransferForm;
class ViafaxOptionForm;
struct GroupDescription;

// How the dialog about a file that is no directory ends; the numbers are those it answers.
enum class InvalidFileEnd { kClosed = 0, kCreate = 2, kLoad = 3, kRecovered = 4 };

// How the dialog about criteria ends; the numbers are those of its buttons.
enum class CriteriaEnd { kQuit = 0, kReplace = 188, kAdd = 208 };

// The dialogs that keep named sets: of criteria, of parameters for imports and for exports.
enum class SetsDialog { kCriteria, kImport, kExport };

class DialogHost {
 public:
  virtual ~DialogHost() = default;

  // Each shows the dialog and returns when it has ended: true when the user confirmed it.
  virtual bool RunFilePicker(FilePicker& picker) = 0;
  virtual bool RunDescription(DescriptionForm& form) = 0;
  virtual bool RunPreferences(PreferencesForm& form) = 0;
  virtual InvalidFileEnd RunInvalidFile(InvalidFileForm& form) = 0;
  virtual CriteriaEnd RunCriteria(CriteriaForm& form) = 0;
  virtual void RunNamedSets(SetsDialog dialog, NamedSetsForm& form) = 0;
  // The name typed; nothing when it was abandoned or emptied.
  virtual std::optional<std::string> AskName(SetsDialog dialog, const std::string& offered) = 0;
  virtual void RunGroups(GroupsForm& form) = 0;
  virtual std::optional<GroupDescription> AskGroup(const GroupDescription& offered) = 0;
  virtual void RunSearch(SearchForm& form) = 0;
  virtual bool RunNumber(NumberForm& form) = 0;
  virtual void RunTransfer(TransferForm& form) = 0;
  virtual void RunRanks(RankForm& form) = 0;
  virtual void RunFixedLayout(FixedLayoutForm& form) = 0;
  virtual void RunDbaseImport(DbaseImportForm& form) = 0;
  virtual void RunDbaseExport(DbaseExportForm& form) = 0;
  // The destination of a transfer is there: true to replace it, false to add to it, nothing when
  // the user leaves.
  virtual std::optional<bool> AskReplace(bool imports) = 0;
  virtual void RunPrint(PrintForm& form) = 0;
  virtual bool RunPrinterChoice(PrinterChoiceForm& form) = 0;
  // The printers of the system; lives as long as the dialogs.
  virtual PrinterPort& Printers() = 0;
  virtual bool RunViafaxOption(ViafaxOptionForm& form) = 0;
  // Returns when the records are at their end or the user leaves.
  virtual void RunEnrichment(EnrichmentForm& form) = 0;
  virtual void ShowAbout() = 0;
  // The box that asks for patience, without a button; it stays until it is hidden.
  virtual void ShowPatience(bool shown) = 0;
  // A page of the help, above whatever is open.
  virtual void ShowHelp(int topic) = 0;
};

}  // namespace carnetel
