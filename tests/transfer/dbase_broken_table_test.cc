#include <gmock/gmock.h>

#include "tests/transfer/dbase_testing.h"

namespace carnetel {
namespace {

using testing::Contains;
using testing::Pair;

// Headers and mappings that no program writes.
class DbaseImportOfBrokenTables : public DbaseTest {};

TEST_F(DbaseImportOfBrokenTables, RecordsWithoutLengthHoldNothing) {
  std::string table = Table({{"S", 5}}, {"Avant", "Apres"});
  table.replace(10, 2, Le16(0));
  const TransferOutcome outcome = ImportTable(table, ImportMapping({5}, {{kSte1, 0}}));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.cards, 0u);
  EXPECT_EQ(progress_.steps, 0);
}

TEST_F(DbaseImportOfBrokenTables, RecordsBehindTheEndOfTheFileAreNotThere) {
  std::string table = Table({{"S", 5}}, {"Avant", "Apres"});
  table.replace(4, 4, Le32(0xFFFFFFFF));
  const TransferOutcome outcome = ImportTable(table, ImportMapping({5}, {{kVille, 0}}));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.cards, 0u) << "no label";
  EXPECT_EQ(progress_.steps, 3) << "the end mark begins a record";
  EXPECT_THAT(progress_.opened, Contains(Pair(ProgressForm::kTransfer, 0xFFFFFFFFu)));
}

TEST_F(DbaseImportOfBrokenTables, ATableThatWasCutGivesWhatIsLeft) {
  std::string table = Table({{"S", 5}, {"V", 5}}, {"AvantLyon ", "ApresParis", "Jamaisvu"});
  table.resize(32 + 64 + 1 + 11 + 9);  // in the town of the second record
  EXPECT_EQ(ImportTable(table, ImportMapping({5, 5}, {{kSte1, 0}, {kVille, 1}})).cards, 2u);
  EXPECT_EQ(Card(0), MakeCard({{kSte1, "Avant"}, {kVille, "Lyon"}}));
  EXPECT_EQ(Card(1), MakeCard({{kSte1, "Apres"}, {kVille, "Par"}}));
}

TEST_F(DbaseImportOfBrokenTables, AHeaderThatEndsEarlyIsNoTable) {
  for (const size_t size : {0u, 1u, 31u}) {
    const TransferOutcome outcome =
        ImportTable(Table({{"S", 5}}, {}).substr(0, size), ImportMapping({5}, {{kSte1, 0}}));
    EXPECT_EQ(outcome.result, -1) << size;
    EXPECT_EQ(outcome.message, "Format du Fichier Dbase non reconnu") << size;
  }
  EXPECT_EQ(
      ImportTable(Table({{"S", 5}}, {"Avant"}).substr(0, 32), ImportMapping({5}, {{kSte1, 0}}))
          .result,
      0)
      << "a header and nothing else is an empty table";
}

TEST_F(DbaseImportOfBrokenTables, AHeaderLengthBehindTheEndLeavesNoRecord) {
  std::string table = Table({{"S", 5}}, {"Avant"});
  table.replace(8, 2, Le16(65535));
  EXPECT_EQ(ImportTable(table, ImportMapping({5}, {{kSte1, 0}})).cards, 0u);
}

TEST_F(DbaseImportOfBrokenTables, AHeaderLengthOf0ReadsTheHeaderAsRecords) {
  std::string table = Table({{"S", 5}}, {"Avant"});
  table.replace(8, 2, Le16(0));
  EXPECT_EQ(ImportTable(table, ImportMapping({5}, {{kSte1, 0}})).cards, 1u);
  EXPECT_EQ(Card(0), MakeCard({{kSte1, "Z\x0C\x1F\x01"}}));
}

TEST_F(DbaseImportOfBrokenTables, ColumnsFarBehindTheRecordAreReadWhereTheyAre) {
  DbaseMapping mapping = ImportMapping({5, 5, 5}, {{kSte1, 0}, {kVille, 1}, {kPays, 2}});
  mapping.columns[1].offset = 100000;
  mapping.columns[2].offset = 0xFFFFFFFF;
  std::string table = Table({{"S", 5}}, {"Avant", "Suite"});
  table.resize(65 + 100000, ' ');
  table += "Lyon Paris";
  EXPECT_EQ(ImportTable(table, mapping).cards, 2u);
  EXPECT_EQ(Card(0), MakeCard({{kSte1, "Avant"}, {kVille, "Lyon"}}));
  EXPECT_EQ(Card(1), MakeCard({{kSte1, "Suite"}, {kVille, "aris"}}));
}

}  // namespace
}  // namespace carnetel
