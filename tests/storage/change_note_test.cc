// The note of a change under way, byte by byte: every seat of every release has to read it.
#include "storage/change_note.h"

#include <gtest/gtest.h>

#include "tests/support/same_bytes.h"

namespace carnetel {
namespace {

TEST(ChangeNote, IsFiveNumbersWithAMagicInFrontAndACheckBehind) {
  EXPECT_EQ(Hex(StoreNote({ChangeKind::kReplace, 0x0102, 0x7FFF})),
            "4A 52 4E 4C 05 00 00 00 02 01 00 00 FF 7F 00 00 B2 2C 4E 4C");
  EXPECT_EQ(kChangeNoteOffset, 128U);
  EXPECT_EQ(kChangeNoteSize, 20U);
}

TEST(ChangeNote, KindsKeepTheirNumbers) {
  const ChangeKind kinds[] = {ChangeKind::kAdd,     ChangeKind::kDelete,  ChangeKind::kGuard,
                              ChangeKind::kRewrite, ChangeKind::kReplace, ChangeKind::kReplaced};
  uint32_t number = 0;
  for (const ChangeKind kind : kinds) EXPECT_EQ(static_cast<uint32_t>(kind), ++number);
}

TEST(ChangeNote, ReadsWhatWasStored) {
  for (uint32_t kind = 1; kind <= 6; ++kind) {
    const ChangeNote note = {static_cast<ChangeKind>(kind), 7 * kind, 30000 + kind};
    EXPECT_EQ(ReadNote(StoreNote(note)), note);
  }
}

TEST(ChangeNote, ZerosAreNone) {
  EXPECT_EQ(ReadNote(ChangeNoteBytes{}), std::nullopt);
}

TEST(ChangeNote, OneOfWhichAByteIsWrongOrMissingIsNone) {
  const ChangeNoteBytes whole = StoreNote({ChangeKind::kDelete, 5, 99});
  for (size_t i = 0; i < whole.size(); ++i) {
    ChangeNoteBytes bytes = whole;
    bytes[i] ^= std::byte{0x10};
    EXPECT_EQ(ReadNote(bytes), std::nullopt) << i;
    EXPECT_EQ(ReadNote(ByteView(whole).first(i)), std::nullopt) << i;
  }
}

TEST(ChangeNote, KindsOfOtherReleasesAreNone) {
  for (const uint32_t kind : {0U, 7U, 0xFFFFFFFFU}) {
    EXPECT_EQ(ReadNote(StoreNote({static_cast<ChangeKind>(kind), 1, 2})), std::nullopt) << kind;
  }
}

}  // namespace
}  // namespace carnetel
