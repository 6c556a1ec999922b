// The chooser without its widgets, for one test: a view that keeps what the window would show, and
// the program below it over a home folder in memory.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "selection/group_file.h"
#include "selection/marks.h"
#include "shell/chooser.h"
#include "tests/shell/window_fixture.h"

namespace carnetel {

class FakeChooserView : public ChooserView {
 public:
  std::map<int, std::string> titles;
  std::string position;
  int32_t marked = -1;
  std::string status;
  std::vector<std::string> recents;
  std::vector<std::string> groups;
  int group = -1;
  std::vector<std::string> sets;
  int set = -1;
  int style = 0;
  std::set<int> enabled;
  int refills = 0;
  std::vector<int> repainted;
  int list_focuses = 0;
  int consultations = 0;
  int consultation_updates = 0;
  int beeps = 0;
  int ends = 0;

  void SetColumnTitle(int control, const std::string& utf8) override { titles[control] = utf8; }
  void SetPosition(const std::string& utf8) override { position = utf8; }
  void SetMarked(int32_t count) override { marked = count; }
  void SetStatus(const std::string& utf8) override { status = utf8; }
  void SetRecents(const std::vector<std::string>& texts) override { recents = texts; }
  void SetGroups(const std::vector<std::string>& names, int current) override {
    groups = names;
    group = current;
  }
  void SetSets(const std::vector<std::string>& names, int current) override {
    sets = names;
    set = current;
  }
  void CheckStyle(int command) override { style = command; }
  void SetButton(int button, bool on) override {
    if (on) {
      enabled.insert(button);
    } else {
      enabled.erase(button);
    }
  }
  void ListRefilled() override { ++refills; }
  void ShowCurrentRow() override {}
  void RepaintRow(int row) override { repainted.push_back(row); }
  void FocusList() override { ++list_focuses; }
  void OpenConsultation() override { ++consultations; }
  void UpdateConsultation() override { ++consultation_updates; }
  void Beep() override { ++beeps; }
  void EndWindow() override { ++ends; }
};

class ChooserTest : public WindowFixture {
 protected:
  using Texts = std::vector<std::string>;
  using Numbers = std::vector<int>;
  using Shown = std::vector<QueuedMessages::Entry>;

  // Launch types of the calling programs.
  static constexpr int kSingle = 1;
  static constexpr int kMany = 2;
  static constexpr int kManyLong = 12;
  static constexpr int kViafax = 9;
  // Bytes of the kinds of numbers.
  static constexpr int kFaxByte = 1;

  ~ChooserTest() override { chooser.reset(); }

  // Four cards, of which three have a fax: ALPHA, GAMMA and ZETA. The card at place n, from 0, lies
  // at 768 * (n + 1).
  void BuildFour() {
    Build({CardWith({{kSte1, "ALPHA"},
                     {kFax, "0140000001"},
                     {kQualite, "M."},
                     {kPrenom, "Jean"},
                     {kNom, "DURAND"},
                     {kVille, "LYON"}}),
           CardWith({{kSte1, "BETA"}, {kTel1, "0240000002"}, {kVille, "PARIS"}}),
           CardWith({{kSte1, "GAMMA"}, {kFax, "0340000003"}, {kNom, "ZOLA"}, {kVille, "LYON"}}),
           CardWith({{kSte1, "ZETA"}, {kFax, "0440000004"}, {kVille, "NICE"}})});
  }
  [[nodiscard]] std::string ExchangeFile() const { return home + "FAX12345.DAT"; }
  [[nodiscard]] StartupRequest Request(int launch_type, int number = kFaxByte) const {
    StartupRequest request;
    request.launch_type = launch_type;
    request.caller_argument = number;
    request.exchange_file_path = ExchangeFile();
    return request;
  }
  void StartChooser(int launch_type, int number = kFaxByte) {
    StartChooser(Request(launch_type, number));
  }
  void StartChooser(const StartupRequest& request, int capacity = kCapacity) {
    chooser.reset();
    view = FakeChooserView();
    StartSession(request);
    ASSERT_TRUE(session->OpenAtStart(&fell_back));
    const auto kind = static_cast<ChooserKind>(session->role().parameter & 0xFFFF);
    chooser = std::make_unique<ChooserLogic>(*session, view, dialogs, kind, capacity);
    chooser->Start();
  }
  // Ends the run after the window.
  void Exit() {
    session->Exit();
    chooser.reset();
    session.reset();
  }

  // Works on the directory before the start, through the stores.
  void WithDirectory(const std::function<void(Directory&)>& work);
  // A group of the cards at these places of the address file; their marks go again.
  void MakeGroup(const std::string& name, const std::vector<uint32_t>& entries,
                 uint8_t mode = kMembersOnly, const std::string& set_name = "Sans Nom");
  // A set of one criterion.
  void SaveSet(const std::string& name, int16_t code, const std::string& value);

  // Companies of the rows.
  [[nodiscard]] Texts Companies() const {
    Texts companies;
    for (int row = 0; row < chooser->list().row_count(); ++row) {
      companies.push_back(chooser->Row(row).first);
    }
    return companies;
  }
  [[nodiscard]] Numbers Marked() const {
    Numbers rows;
    for (int row = 0; row < chooser->list().row_count(); ++row) {
      if (chooser->list().IsMarked(row)) rows.push_back(row);
    }
    return rows;
  }
  // The first number of each record of that size, or the size of the file when it is no multiple.
  [[nodiscard]] Texts Extracted(size_t record_size = 149) const {
    const std::vector<std::byte> bytes = memory.Contents(ExchangeFile());
    if (bytes.size() % record_size != 0) return {std::to_string(bytes.size())};
    Texts numbers;
    for (size_t at = 0; at < bytes.size(); at += record_size) {
      numbers.push_back(CopyFieldText(ByteView(bytes).subspan(at, 30), 30));
    }
    return numbers;
  }

  FakeChooserView view;
  std::unique_ptr<ChooserLogic> chooser;
};

}  // namespace carnetel
