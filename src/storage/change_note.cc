#include "storage/change_note.h"

namespace carnetel {
namespace {

constexpr uint32_t kMagic = 0x4C4E524A;

uint32_t CheckOf(uint32_t kind, uint32_t card, uint32_t count) {
  return kMagic ^ kind ^ card ^ count;
}

}  // namespace

ChangeNoteBytes StoreNote(const ChangeNote& note) {
  const auto kind = static_cast<uint32_t>(note.kind);
  ChangeNoteBytes bytes{};
  StoreLe32(bytes, 0, kMagic);
  StoreLe32(bytes, 4, kind);
  StoreLe32(bytes, 8, note.card);
  StoreLe32(bytes, 12, note.count);
  StoreLe32(bytes, 16, CheckOf(kind, note.card, note.count));
  return bytes;
}

std::optional<ChangeNote> ReadNote(ByteView bytes) {
  if (bytes.size() < kChangeNoteSize || LoadLe32(bytes, 0) != kMagic) return {};
  const uint32_t kind = LoadLe32(bytes, 4);
  const ChangeNote note = {static_cast<ChangeKind>(kind), LoadLe32(bytes, 8), LoadLe32(bytes, 12)};
  const bool known = kind >= static_cast<uint32_t>(ChangeKind::kAdd) &&
                     kind <= static_cast<uint32_t>(ChangeKind::kReplaced);
  if (!known || LoadLe32(bytes, 16) != CheckOf(kind, note.card, note.count)) return {};
  return note;
}

}  // namespace carnetel
