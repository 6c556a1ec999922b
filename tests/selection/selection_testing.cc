#include "tests/selection/selection_testing.h"

#include <algorithm>

#include "selection/marks.h"

namespace carnetel {

CriteriaRows RowsOf(const std::vector<Criterion>& criteria) {
  const Texts comparators = {"=", "<>", "<=", ">=", "<", ">", "~"};
  CriteriaRows rows;
  for (size_t row = 0; row < criteria.size(); ++row) {
    const auto found = std::ranges::find(comparators, criteria[row].comparator);
    EXPECT_NE(found, comparators.end()) << criteria[row].comparator;
    rows.SetRow(row, {static_cast<int16_t>(criteria[row].field + 1),
                      static_cast<char>('0' + (found - comparators.begin())),
                      OemText(criteria[row].value)});
  }
  return rows;
}

bool EntryBit(const FileBytes& address_file, size_t row, unsigned bit) {
  const size_t at = 320 + 16 * row + 4 + bit / 8;
  return (std::to_integer<unsigned>(address_file.at(at)) >> (bit % 8) & 1) != 0;
}

void SelectionFixture::Open(int key_field, const std::string& path) {
  Close();
  path_ = path;
  DirectoryOptions options;
  options.path = path;
  options.key_field = key_field;
  directory_ = std::make_unique<Directory>(DirectoryServices{faults_, clock_, recorded_}, options);
  EXPECT_TRUE(IsOpen(directory_->OpenDirectory()));
  (void)recorded_.TakeLog();
}

void SelectionFixture::Close() {
  if (directory_ != nullptr) directory_->CloseDirectory();
  directory_.reset();
}

void SelectionFixture::AddCompanies(std::initializer_list<const char*> companies) {
  for (const char* company : companies) AddCard(company, "");
}

uint32_t SelectionFixture::AddFields(std::initializer_list<std::pair<int, std::string>> fields) {
  CardRecord& card = directory_->context().current;
  card.Clear();
  for (const auto& [field, text] : fields) card.SetField(field, OemText(text));
  uint32_t position = 0;
  EXPECT_EQ(CardDispatch(*directory_).Add(false, &position), 0);
  return directory_->last_inserted().card_offset;
}

void SelectionFixture::MarkOnly(const Texts& companies) {
  const Texts all = Companies();
  for (size_t row = 0; row < all.size(); ++row) {
    const bool marked = std::ranges::find(companies, all[row]) != companies.end();
    SetMark(*directory_, static_cast<uint32_t>(row), marked);
  }
  EXPECT_EQ(Marked(), companies);
}

void SelectionFixture::Display(uint8_t group_bit) {
  directory_->CloseListView();
  directory_->set_group_bit(group_bit);
}

Texts SelectionFixture::CompaniesWith(unsigned bit) {
  const FileBytes address_file = Contents(".ADR");
  const Texts all = Companies();
  Texts with;
  for (size_t row = 0; row < all.size(); ++row) {
    if (EntryBit(address_file, row, bit)) with.push_back(all[row]);
  }
  return with;
}

}  // namespace carnetel
