#include "tests/selection/scan_model.h"

#include <array>
#include <cstring>

namespace carnetel {
namespace {

using Byte = unsigned char;

Byte At(const FileBytes& bytes, size_t index) {
  return std::to_integer<Byte>(bytes.at(index));
}

// Offsets and sizes of the fields, by field code.
struct Place {
  size_t offset;
  size_t size;
};
Place PlaceOf(int code) {
  const size_t sizes[] = {32, 32, 32, 32, 32, 5, 32, 32, 24, 24, 32, 16, 24, 24, 24, 24,
                          24, 24, 24, 24, 21, 4, 21, 12, 21, 14, 64, 21, 12, 12, 12};
  Place place = {0, sizes[0]};
  for (int i = 1; i < code; ++i) place = {place.offset + place.size, sizes[i]};
  return place;
}

int RowOfLetter(int letter) {
  int row = letter - '0';
  if (row > 9) row = letter - '7';
  return row < 0 || row > 35 ? -1 : row;
}

// The table of 37 starts, from the slots of the index.
std::array<int64_t, 37> Starts(const FileBytes& index) {
  std::array<int64_t, 37> starts;
  starts.fill(320);
  for (size_t page = 0; page + 506 <= index.size(); page += 506) {
    for (size_t slot = page + 2; slot + 14 <= page + 506; slot += 14) {
      if (At(index, slot) == 0 || LoadLe32(index, slot + 10) == 0) continue;
      int row = RowOfLetter(static_cast<signed char>(At(index, slot)));
      if (row < 0) row = 0;
      for (size_t behind = static_cast<size_t>(row) + 1; behind < 37; ++behind) {
        starts[behind] += 16;
      }
    }
  }
  return starts;
}

int Lower(Byte byte) {
  return byte >= 'A' && byte <= 'Z' ? byte + 32 : byte;
}

// Field against value over n bytes; both end in a zero.
int Compare(const std::string& field, const std::string& value, size_t n) {
  for (size_t i = 0; i < n; ++i) {
    const int a = Lower(static_cast<Byte>(field.c_str()[i]));
    const int b = Lower(static_cast<Byte>(value.c_str()[i]));
    if (a != b) return a - b;
    if (a == 0) return 0;
  }
  return 0;
}

std::string Capitals(std::string text) {
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\x1B') {
      ++i;
    } else if (text[i] >= 'a' && text[i] <= 'z') {
      text[i] = static_cast<char>(text[i] - 32);
    }
  }
  return text;
}

// Value of a row: up to a zero byte, on into the next row, but not out of the array.
std::string ValueOf(const FileBytes& rows, size_t row) {
  std::string value;
  for (size_t i = row * 24 + 3; i < rows.size() && At(rows, i) != 0; ++i) {
    value += static_cast<char>(At(rows, i));
  }
  return value;
}

bool FailsEmpty(Byte comparator, Byte first) {
  if (comparator == '0' || comparator == '2' || comparator == '6') return first != 0;
  if (comparator == '1' || comparator == '5') return first == 0;
  if (comparator == '4') return static_cast<signed char>(first) >= 0;
  return false;
}

bool Fails(Byte comparator, int c) {
  return (comparator == '0' && c != 0) || (comparator == '1' && c == 0) ||
         (comparator == '2' && c > 0) || (comparator == '3' && c < 0) ||
         (comparator == '4' && c >= 0) || (comparator == '5' && c <= 0);
}

bool Passes(const FileBytes& rows, const FileBytes& main_file, size_t card) {
  for (size_t row = 0; row < 6; ++row) {
    int code = At(rows, row * 24);
    if (code == 0) return true;
    if (code == 26 && At(main_file, card + PlaceOf(26).offset) == 0) code = 6;
    const Place place = PlaceOf(code);
    const Byte comparator = At(rows, row * 24 + 2);
    const std::string value = ValueOf(rows, row);
    std::string field;
    for (size_t i = 0; i < place.size && At(main_file, card + place.offset + i) != 0; ++i) {
      field += static_cast<char>(At(main_file, card + place.offset + i));
    }
    if (value.empty()) {
      if (FailsEmpty(comparator, static_cast<Byte>(field.c_str()[0]))) return false;
    } else if (comparator == '6') {
      if (Capitals(field).find(Capitals(value)) == std::string::npos) return false;
    } else if (Fails(comparator, Compare(field, value, std::min(place.size, value.size())))) {
      return false;
    }
  }
  return true;
}

class Scan {
 public:
  explicit Scan(const ModelInput& input)
      : input_(input), all_(At(input.rows, 3) == '*'), selection_(input.group_bit + 1) {
    out_.address_file = input.address_file;
    out_.marked_count = input.marked_count;
    if (input.add || input.marked_count == 0) return;
    for (size_t entry = 320; entry < out_.address_file.size(); entry += 16) Clear(entry);
    out_.marked_count = 0;
  }

  void Open(int64_t units) {
    out_.log.push_back("Sélection en cours parmi " + std::to_string(units) + " fiche(s)");
    out_.marked_count = 0;
  }
  // Whether the user goes on.
  bool Step() {
    out_.log.push_back(std::to_string(out_.marked_count));
    return ++steps_ != input_.stop_at;
  }
  ModelOutcome Close(bool shown) {
    if (shown) out_.log.emplace_back("closed");
    return out_;
  }
  bool Test(size_t entry) {
    const size_t card = LoadLe32(out_.address_file, entry);
    if (!all_ && !Passes(input_.rows, input_.main_file, card)) return false;
    if (!Bit(entry, selection_)) ++out_.marked_count;
    if (out_.first_passed == 0) out_.first_passed = static_cast<uint32_t>(card);
    return true;
  }
  [[nodiscard]] bool Bit(size_t entry, unsigned bit) const {
    return (At(out_.address_file, entry + 4 + bit / 8) & (1 << bit % 8)) != 0;
  }
  void Mark(size_t entry) {
    out_.address_file[entry + 4 + selection_ / 8] |= std::byte(1 << selection_ % 8);
  }
  [[nodiscard]] size_t end() const { return out_.address_file.size(); }
  [[nodiscard]] bool all() const { return all_; }

 private:
  void Clear(size_t entry) {
    out_.address_file[entry + 4 + selection_ / 8] &= ~std::byte(1 << selection_ % 8);
  }

  const ModelInput& input_;
  bool all_;
  unsigned selection_;
  ModelOutcome out_;
  int steps_ = 0;
};

std::pair<int64_t, int64_t> Range(const ModelInput& input, int64_t end) {
  const Byte comparator = At(input.rows, 2);
  if (At(input.rows, 0) != 1 || comparator < '0' || comparator > '5') return {320, end};
  int letter = static_cast<signed char>(At(input.rows, 3));
  if (letter >= 'a' && letter <= 'z') letter -= 32;
  if (letter == 0) {
    letter = '0';
  } else if (letter > 'Z') {
    letter = 0;  // none of these is in the fold table
  }
  const std::array<int64_t, 37> starts = Starts(input.active_index);
  const auto start_of = [&starts](int of, int64_t otherwise) {
    const int row = RowOfLetter(of);
    return row < 0 ? otherwise : starts[static_cast<size_t>(row)];
  };
  const int64_t at = start_of(letter, 320);
  const int64_t behind = RowOfLetter(letter) < 0 ? end : start_of(letter + 1, end);
  if (comparator == '0') return {at, behind};
  if (comparator == '1') return {start_of('0', 320), end};
  if (comparator == '2') return {start_of('0', 320), std::min(end, behind)};
  if (comparator == '3') return {std::max<int64_t>(320, at), end};
  if (comparator == '4') return {start_of('0', 320), std::min(end, at)};
  return {std::max<int64_t>(320, behind), end};
}

}  // namespace

ModelOutcome ModelScan(const ModelInput& input) {
  Scan scan(input);
  const auto total_end = static_cast<int64_t>(scan.end());
  auto [start, end] =
      scan.all() ? std::pair<int64_t, int64_t>(320, total_end) : Range(input, total_end);
  scan.Open(std::max<int64_t>(0, (end - start) / 16));
  for (int64_t position = start; position < end; position += 16) {
    const auto entry = static_cast<size_t>(position);
    const bool passed = scan.Test(entry);
    if (!scan.Step()) break;
    if (passed) scan.Mark(entry);
  }
  return scan.Close(true);
}

ModelOutcome ModelGroupScan(const ModelInput& input, int list_rows) {
  Scan scan(input);
  if (list_rows >= 0) scan.Open(list_rows);
  for (size_t entry = 320; entry < scan.end(); entry += 16) {
    if (scan.Bit(entry, input.group_bit) && scan.Test(entry)) scan.Mark(entry);
    if (list_rows >= 0) (void)scan.Step();
  }
  return scan.Close(list_rows >= 0);
}

}  // namespace carnetel
