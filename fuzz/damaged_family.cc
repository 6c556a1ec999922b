// Damages the files of a small directory as the input says, opens it twice and works on it.
// Whatever the derived files hold, no card of the main file may be lost or changed by opening it,
// and the operations must keep the main file dense.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "platform/memory_file_system.h"
#include "selection/marks.h"
#include "storage/card_dispatch.h"
#include "storage/family_check.h"

namespace carnetel {
namespace {

constexpr int kCards = 80;
constexpr const char* kStem = "/FUZZ";

void Require(bool holds) {
  if (!holds) std::abort();
}

class World {
 public:
  World() : files_(clock_) {
    Directory directory({files_, clock_, progress_}, Options(kSte1));
    directory.OpenDirectory();
    for (int i = 0; i < kCards; ++i) {
      const std::string letter(1, static_cast<char>('A' + i % 2));
      directory.context().current.Clear();
      directory.context().current.SetField(kSte1, OemText(letter + std::to_string(i * 7 % 50)));
      uint32_t position = 0;
      CardDispatch(directory).Add(i % 3 == 0, &position);
    }
    directory.CloseDirectory();
  }
  World(const World& other) : clock_(other.clock_), files_(other.files_) {}

  static DirectoryOptions Options(int key_field) {
    DirectoryOptions options;
    options.path = kStem;
    options.key_field = key_field;
    return options;
  }

  // Each group of five bytes: file, position, what to do, value.
  void Damage(const uint8_t* data, size_t size) {
    constexpr const char* kExtensions[] = {".I01", ".I02", ".ADR", ".CRT"};
    for (; size >= 5; data += 5, size -= 5) {
      const std::string path = std::string(kStem) + kExtensions[data[0] % 4];
      std::vector<std::byte> bytes = files_.Contents(path);
      const size_t position = (size_t{data[1]} << 8 | data[2]) % (bytes.size() + 1);
      switch (data[3] % 4) {
        case 0:
          bytes.resize(position);
          break;
        case 1:
          bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(position), std::byte{data[4]});
          break;
        default:
          if (position < bytes.size()) bytes[position] = std::byte{data[4]};
      }
      files_.SetContents(path, bytes);
    }
  }

  void OpenAndWork(int key_field) {
    const std::vector<std::byte> before = files_.Contents(std::string(kStem) + ".DAN");
    for (int i = 0; i < 2; ++i) {
      Directory directory({files_, clock_, progress_}, Options(key_field));
      Require(directory.OpenDirectory() == OpenResult::kOpened);
    }
    Require(files_.Contents(std::string(kStem) + ".DAN") == before);
    Directory directory({files_, clock_, progress_}, Options(key_field));
    Require(directory.OpenDirectory() == OpenResult::kOpened);
    uint32_t moved_from = 0;
    DeleteCard(directory, kCardSize * 3, &moved_from);
    CardRecord card;
    card.SetField(kSte1, OemText("B33"));
    const ChangedCard changed = ChangeCard(directory, kCardSize * 5, card);
    Require(changed.result != ChangeResult::kNotPossible);
    SetAllMarks(directory, true);
    uint32_t offset = 0;
    directory.context().current = CardRecord();
    (void)CardDispatch(directory).Find(WalkDirection::kFirst, &offset);
    directory.CloseDirectory();
    Require(files_.Contents(std::string(kStem) + ".DAN").size() == before.size() - kCardSize);
    (void)CheckFamily(files_, FamilyPaths(files_, kStem), key_field);
  }

 private:
  FakeClock clock_{1000000000};
  MemoryFileSystem files_;
  SilentProgress progress_;
};

}  // namespace
}  // namespace carnetel

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const carnetel::World intact;
  carnetel::World world(intact);
  world.Damage(data, size);
  world.OpenAndWork(size % 2 == 0 ? carnetel::kSte1 : carnetel::kNom);
  return 0;
}
