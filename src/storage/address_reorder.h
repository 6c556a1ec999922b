// Making an address file anew while keeping what belongs to its cards: marks, groups and number
// flags follow them when the active index is switched, marks alone when another seat has changed
// the directory.
#pragma once

#include <vector>

#include "storage/directory.h"

namespace carnetel {

// The switch of the active index, in two steps so that a front end can show what is going on: the
// new address file first, with the progress display of every rebuild, then what the old one held.
class AddressReorder {
 public:
  // Makes `key_field` (kSte1 or kNom) the active one and builds the address file in its order.
  // Groups, criteria and layouts stay.
  AddressReorder(Directory& directory, int key_field);

  // False when the new address file could not be made; the directory is not usable then.
  [[nodiscard]] bool built() const { return built_; }

  // Gives every entry the mark bits and flags its card had, and takes over the header with the
  // saved rows. Counts the marks anew.
  void CarryOver();

 private:
  Directory& directory_;
  AddressHeader old_header_;
  std::vector<EntrySlot> old_entries_;
  bool built_;
};

// Which view a refresh is for.
enum class RefreshView { kWholeFile = 0, kFirstGroup = 1, kOtherGroup = 2 };

// Brings the address file in line with a main file that another seat has changed. With the whole
// file displayed it is made anew: entries that were marked keep all their bits, the others lose
// theirs, and the seat's groups, criteria and layouts go, by design. With the first group displayed
// its entries are gone over and counted. Main file and indexes are read again in both cases. Other
// groups: nothing happens. `quiet` leaves out the progress display. False when a store could not be
// read or the address file could not be made.
bool RefreshAddressFile(Directory& directory, RefreshView view, bool quiet);

// With several seats: the same, when another one has added or deleted cards since the last time.
// True when the list is to be filled again.
bool RefreshIfChanged(Directory& directory, RefreshView view);

}  // namespace carnetel
