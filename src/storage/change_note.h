// What a seat is about to do to a main file that several seats share, noted in the file's header
// block while it does it: a seat that dies half-way leaves its note, and the next one that gets at
// the file brings the change to its end or takes it back, so that every card is there once. At rest
// the note is all zeros, as in the file of a single seat.
//
//   128  u32 magic 4C4E524Ah
//   132  u32 kind
//   136  u32 number of the card concerned (its offset / 768), 0 for none
//   140  u32 count of cards that the main file is to have behind its changed part
//   144  u32 check: the three above, exclusive-or with the magic
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "base/bytes.h"

namespace carnetel {

enum class ChangeKind : uint32_t {
  kAdd = 1,       // cards are added behind the last one
  kDelete = 2,    // the last card goes into the place of `card`
  kGuard = 3,     // a copy of a changed card is put behind the last one
  kRewrite = 4,   // that copy goes over `card`
  kReplace = 5,   // the last card goes into the place of `card`; the copy stays behind it
  kReplaced = 6,  // the copy is added as the new last card
};

struct ChangeNote {
  ChangeKind kind = ChangeKind::kAdd;
  uint32_t card = 0;
  uint32_t count = 0;

  friend bool operator==(const ChangeNote&, const ChangeNote&) = default;
};

inline constexpr size_t kChangeNoteOffset = 128;
inline constexpr size_t kChangeNoteSize = 20;
using ChangeNoteBytes = std::array<std::byte, kChangeNoteSize>;

[[nodiscard]] ChangeNoteBytes StoreNote(const ChangeNote& note);
// Nothing for zeros and for anything that is no whole note.
[[nodiscard]] std::optional<ChangeNote> ReadNote(ByteView bytes);

}  // namespace carnetel
