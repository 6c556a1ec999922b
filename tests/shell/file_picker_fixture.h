// A file dialog without widgets over a folder in memory, for one test.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/string_table.h"
#include "shell/file_picker.h"
#include "tests/shell/window_fixture.h"

namespace carnetel {

class FilePickerTest : public WindowFixture {
 protected:
  using Names = std::vector<std::string>;
  using Shown = std::vector<QueuedMessages::Entry>;

  FilePickerTest() { folder = home + "f"; }

  void MakeFile(const std::string& path, std::string_view text = "x") {
    memory.SetContents(path, AsBytes(text));
  }
  // The header of a main file and nothing behind it.
  void MakeDirectoryFile(const std::string& name, std::string_view description, uint16_t owner = 0,
                         uint32_t magic = kStoreMagic) {
    MainHeader header = MainHeader::Template();
    header.set_description(OemText(std::string(description)));
    header.set_owner(owner);
    StoreLe32(header.bytes(), MainHeader::kMagicOffset, magic);
    memory.SetContents(folder + "/" + name, header.bytes());
  }
  void StartOnSeat(int32_t seat) {
    StartupRequest request;
    request.exchange_file_path = home + "seat/ECHANGE.DAT";
    request.workstation_number = seat;
    StartSession(request);
  }
  static FilePickerOptions Directories(ChooserTemplate form) {
    FilePickerOptions options;
    options.form = form;
    options.filters = LoadText(168);
    options.default_extension = ".DAN";
    return options;
  }
  FilePicker Open(FilePickerOptions options) {
    if (session == nullptr) StartSession();
    if (options.folder.empty()) options.folder = folder;
    options.environment = [this](const std::string& name) { return name == "HOME" ? home : ""; };
    return {*session, std::move(options)};
  }
  FilePicker Open(ChooserTemplate form) { return Open(Directories(form)); }
  FilePicker OpenAny() {
    FilePickerOptions options;
    options.filters = LoadText(167);
    return Open(options);
  }
  // What OK answers for a typed name.
  static PickerAnswer Type(FilePicker& picker, const std::string& name) {
    picker.SetName(name);
    return picker.Accept();
  }
  static Shown NoAccess(const std::string& path) {
    return {{MessageStyle::kError, 79, "Accès au fichier " + path + " impossible"}};
  }

  std::string folder;
};

}  // namespace carnetel
