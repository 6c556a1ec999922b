// Whether the four stores of a directory agree, judged by their bytes alone: every card in both
// indexes once, under its key and in order, and one entry for it in the address file. For
// directories whose keys are plain: no character that folds, none between '9' and 'A'.
#pragma once

#include <string>
#include <vector>

#include "tests/storage/store_fixture.h"

namespace carnetel {

struct FamilyBytes {
  FileBytes main;
  FileBytes index1;
  FileBytes index2;
  FileBytes address;
};
FamilyBytes ReadFamily(const MemoryFileSystem& files, std::string_view stem);

// The whole cards of a main file, their times set to zero.
std::vector<CardRecord> CardsOf(ByteView main_file);

// The card without the time of its last write.
CardRecord Timeless(CardRecord card);

// kSorted: keys ascend and no empty slot stands in front of a used one. kAny: holes are allowed,
// as an opening leaves them where it cleared a slot, and keys behind them in any order.
enum class SlotOrder { kSorted, kAny };

// What is wrong with an index of the cards by `key_field`; empty when nothing is. `order` takes the
// card offsets in its order.
std::string IndexFault(ByteView index, const std::vector<CardRecord>& cards, int key_field,
                       SlotOrder slot_order, std::vector<uint32_t>* order);

// What is wrong with an address file. With `order`, its entries must stand in it; with `flags`, the
// number flags must be those of the cards.
std::string AddressFault(ByteView address, const std::vector<CardRecord>& cards,
                         const std::vector<uint32_t>* order, bool flags);

// Everything above, for the directory whose first index is active.
std::string FamilyFault(const FamilyBytes& family, SlotOrder slot_order = SlotOrder::kSorted);

}  // namespace carnetel
