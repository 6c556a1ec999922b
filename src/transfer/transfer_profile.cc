#include "transfer/transfer_profile.h"

#include <algorithm>

namespace carnetel {
namespace {

constexpr int kDefaultFields = 27;  // those behind take no part

// The default fixed layout is a card of this system's own early shape, so that the main file of a
// directory can be read as a file of fixed records.
constexpr std::array<FixedPlace, kDefaultFields> kDefaultPlaces = {
    {{0, 32},   {32, 32},  {64, 32},  {96, 32},  {128, 32}, {160, 5},  {165, 32},
     {197, 32}, {229, 24}, {253, 24}, {277, 32}, {309, 16}, {325, 24}, {349, 24},
     {373, 24}, {397, 24}, {421, 24}, {445, 24}, {469, 24}, {493, 24}, {517, 21},
     {538, 4},  {542, 21}, {563, 12}, {575, 21}, {596, 14}, {610, 128}}};

// No field has rank 22, and several share one: fields 10 and 11, which are both transferred, share
// rank 3, so that an exported line has one column more than ranks. Files in use depend on it.
constexpr std::array<int16_t, kDefaultFields> kDefaultRanks = {
    4, 5, 6, 7, 7, 8, 9, 10, 1, 2, 3, 3, 16, 17, 18, 19, 20, 21, 11, 12, 14, 14, 13, 13, 15, 8, 23};

constexpr int16_t kDefaultFirstCard = 768;
constexpr int16_t kDefaultCardSize = 768;

}  // namespace

TransferProfile::TransferProfile() {
  set_name(OemText("Derni\x8Are Composition"));
  set_type(TransferFileType::kDelimited);
  set_field_separator("22h 2Ch");
  set_card_separator("0Dh 0Ah");
  set_first_card_offset(kDefaultFirstCard);
  set_card_size(kDefaultCardSize);
  for (int field = 0; field < kDefaultFields; ++field) {
    set_place(field, kDefaultPlaces[static_cast<size_t>(field)]);
    set_rank(field, kDefaultRanks[static_cast<size_t>(field)]);
  }
}

TransferProfile TransferProfile::OfNewInstallation() {
  TransferProfile profile;
  profile.set_field_separator(";");
  profile.set_card_separator("CRLF");
  return profile;
}

TransferProfile TransferProfile::Load(ByteView slot) {
  TransferProfile profile;
  std::ranges::copy(slot.first(kSize), profile.bytes_.begin());
  return profile;
}

void TransferProfile::Store(ByteSpan slot) const {
  StorePadded(slot, 0, kProfileSlotSize, AsChars(bytes_));
}

void TransferProfile::set_place(int field, FixedPlace place) {
  SetInt16(PlaceOffset(field), place.position);
  SetInt16(PlaceOffset(field) + 2, place.size);
}

void TransferProfile::ClearRanks() {
  for (int field = 0; field < kFieldCount; ++field) set_rank(field, 0);
}

}  // namespace carnetel
