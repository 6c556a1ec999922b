// Directories in memory, one of them open, and a user who answers the file dialog and the message
// boxes, for one test.
#pragma once

#include <unistd.h>

#include <string>
#include <vector>

#include "shell/directory_chooser.h"
#include "tests/shell/fake_dialogs.h"
#include "tests/shell/window_fixture.h"

namespace carnetel {

class DirectoryChooserTest : public WindowFixture {
 protected:
  static constexpr auto kCreate = ChooserTemplate::kCreate;
  static constexpr auto kOpen = ChooserTemplate::kOpen;
  static constexpr auto kDestroy = ChooserTemplate::kDestroy;
  static constexpr auto kOther = ChooserTemplate::kOther;
  using Names = std::vector<std::string>;
  using Shown = std::vector<QueuedMessages::Entry>;

  ~DirectoryChooserTest() override {
    session.reset();
    for (const std::string& folder : {home, home + "seat/"}) {
      for (const char* stem : {"A", "B", "CARNETEL", "NEW", "mes.fiches"}) {
        ::unlink(DirectoryGuard::LockFilePath(folder + stem + ".ADR").c_str());
      }
    }
  }

  // One card in each directory, CARNETEL open.
  void OpenCurrent() {
    Build({CardWith({{kSte1, "CURRENT"}})});
    StartSession();
    ASSERT_TRUE(session->OpenAtStart(&fell_back));
  }
  // The same on a seat, whose default directory lies in the folder "seat/".
  void OpenOnSeat(int32_t seat) {
    memory.MakeFolder(home + "seat/");
    StartupRequest request;
    request.exchange_file_path = home + "seat/ECHANGE.DAT";
    request.workstation_number = seat;
    StartSession(request);
    ASSERT_TRUE(session->OpenAtStart(&fell_back));
  }
  void BuildOther(const std::string& stem) { Build(stem, {CardWith({{kSte1, "OTHER"}})}); }
  void MakeFile(const std::string& path) { memory.SetContents(path, AsBytes("no directory")); }
  [[nodiscard]] uint16_t OwnerOf(const std::string& stem) {
    return ReadMainHeader(memory, stem + ".DAN").value_or(MainHeader()).owner();
  }
  void SetOwner(const std::string& stem, uint16_t seat) {
    std::vector<std::byte> bytes = memory.Contents(stem + ".DAN");
    ASSERT_GT(bytes.size(), MainHeader::kSize);
    StoreLe16(bytes, MainHeader::kOwnerOffset, seat);
    memory.SetContents(stem + ".DAN", bytes);
  }

  // The user types `name` and presses OK.
  Choice Type(ChooserTemplate form, const std::string& name, bool act = true) {
    dialogs.file_picker = [&name](FilePicker& picker) {
      picker.SetName(name);
      return picker.Accept() == PickerAnswer::kAccepted;
    };
    return ChooseDirectory(*session, dialogs, form, ChooserMode::kDirectories, act);
  }
  // The user selects `names` in the list and presses OK.
  Choice Select(ChooserTemplate form, const Names& names,
                ChooserMode mode = ChooserMode::kDirectories) {
    dialogs.file_picker = [&names](FilePicker& picker) {
      picker.SelectFiles(names);
      return picker.Accept() == PickerAnswer::kAccepted;
    };
    return ChooseDirectory(*session, dialogs, form, mode, true);
  }
  void Answer(MessageButton button) { messages.Answer(button); }
  static Shown::value_type Error(const std::string& text) {
    return {MessageStyle::kError, 79, text};
  }
  static Shown::value_type Question(const std::string& text) {
    return {MessageStyle::kOkCancel, 80, text};
  }
  [[nodiscard]] Shown::value_type AsksToDestroy(const std::string& stem) const {
    return Question("Le fichier  " + stem + ".DAN va être détruit ");
  }
  [[nodiscard]] Shown::value_type AsksToEmpty(const std::string& stem) const {
    return Question("Le fichier  carnetel courant: " + stem + ".DAN \nva être vidé ");
  }
  [[nodiscard]] bool IsCurrentOpen(uint32_t cards) const {
    return session->directory() != nullptr && session->directory()->main().count() == cards &&
           session->current_path() == DefaultPath();
  }
  Names FilesOf(const std::string& stem_name) {
    Names names;
    for (const std::string& name : memory.List(home)) {
      if (name.starts_with(stem_name + ".")) names.push_back(name);
    }
    return names;
  }

  FakeDialogs dialogs;
};

}  // namespace carnetel
