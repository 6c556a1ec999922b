#include "shell/field_names.h"

#include <gtest/gtest.h>

#include <vector>

#include "storage/card_record.h"

namespace carnetel {
namespace {

TEST(FieldNames, EveryFieldHasOneNameThatFindsItAgain) {
  std::vector<std::string> names;
  for (int field = 0; field < kFieldCount; ++field) {
    names.push_back(FieldName(field));
    EXPECT_EQ(FindField(names.back()), field);
  }
  EXPECT_EQ(names, (std::vector<std::string>{
                       "Ste1",    "Ste2",   "Adr1",  "Adr2", "#4",   "#5",   "Ville", "Pays",
                       "Qualite", "Prenom", "Nom",   "#11",  "Ref1", "Ref2", "Ref3",  "Ref4",
                       "Ref5",    "Ref6",   "Tel1",  "Tel2", "Mtel", "#21",  "Fax",   "#23",
                       "Modem",   "CP",     "Notes", "#27",  "#28",  "#29",  "#30"}));
}

TEST(FieldNames, NamesAreFoundWithoutRegardToCaseAndNumbersForAllFields) {
  EXPECT_EQ(FindField("sTE1"), kSte1);
  EXPECT_EQ(FindField("cp"), kPostalCode);
  EXPECT_EQ(FindField("#0"), kSte1);
  EXPECT_EQ(FindField("#25"), kPostalCode);
}

TEST(FieldNames, AnythingElseIsNoField) {
  for (const char* name : {"", "#", "#31", "#-1", "#1x", "Ste", "Ste11", "Ste1 ", "VILLES", "7"}) {
    EXPECT_EQ(FindField(name), std::nullopt) << name;
  }
}

}  // namespace
}  // namespace carnetel
