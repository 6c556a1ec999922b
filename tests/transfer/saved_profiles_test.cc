#include "transfer/saved_profiles.h"

#include <gmock/gmock.h>

#include "tests/transfer/dbase_testing.h"
#include "tests/transfer/parameter_bytes.h"

namespace carnetel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kPath[] = "/home/CARNETEL.TRS";
constexpr auto kImport = TransferDirection::kImport;
constexpr auto kExport = TransferDirection::kExport;
constexpr auto kDelimited = TransferFileType::kDelimited;
constexpr auto kFixed = TransferFileType::kFixed;
constexpr auto kDbase3 = TransferFileType::kDbase3;
constexpr auto kDbase4 = TransferFileType::kDbase4;

// The bytes of the file are followed step by step in `file`, by hand.
class SavedProfilesTest : public testing::Test {
 protected:
  SavedProfilesTest() { parameters_.StartTransfer(kImport); }

  std::string Contents() { return std::string(AsChars(files_.Contents(kPath))); }
  void SetContents(const std::string& text) { files_.SetContents(kPath, AsBytes(text)); }

  // The slot of the live profile of a new installation under a name.
  static std::string PlainSlot(const std::string& oem_name, int type = 0) {
    std::string slot = Padded(oem_name, 24, '\0') + NewFile().substr(128 + 24, 604);
    PutLe16(slot, 24, type);
    return slot;
  }
  static std::string MappingSlot(const std::string& name, char kind, const std::string& file_name,
                                 char direction, const std::string& first_row) {
    return Padded(
        Padded(name, 24, '\0') + kind + Padded(file_name, 13, '\0') + direction + first_row, 628,
        '\0');
  }
  // Some rows to tell mappings apart.
  static DbaseMapping MappingFor(TransferDirection direction, const std::string& column) {
    DbaseMapping mapping;
    mapping.columns[0] = {OemText(column), 7, 1, DbaseType::kNumber, 5};
    mapping.direction = direction;
    return mapping;
  }
  static std::string RowFor(const std::string& column) {
    return Padded(column, 12, '\0') + "\x07" + Le32(1) + "\x01\x05";
  }

  FakeClock clock_{1000};
  MemoryFileSystem files_{clock_};
  ParameterFile parameters_{files_, kPath};
  SavedProfiles imports_{parameters_, kImport};
  SavedProfiles exports_{parameters_, kExport};
};

TEST_F(SavedProfilesTest, ANewFileHasNone) {
  EXPECT_THAT(imports_.Names(), IsEmpty());
  EXPECT_EQ(imports_.KindOf(0), std::nullopt);
  EXPECT_FALSE(imports_.CanLoad(0));
  EXPECT_FALSE(imports_.Load(0));
  EXPECT_FALSE(imports_.Replace(0, "x"));
  EXPECT_FALSE(imports_.Rename(0, "x"));
  EXPECT_FALSE(imports_.Delete(0));
  EXPECT_EQ(Contents(), NewFile());
}

TEST_F(SavedProfilesTest, AddAppendsTheLiveProfileUnderTheName) {
  EXPECT_TRUE(imports_.Add("Tableur"));
  std::string file = NewFile() + PlainSlot("Tableur");
  PutLe16(file, 92, 2);
  EXPECT_EQ(Contents(), file);
  EXPECT_EQ(parameters_.profile().name().bytes(), "Derni\x8Are Composition")
      << "the live profile keeps its own name";

  parameters_.profile().set_card_separator("LF");
  parameters_.profile().set_type(kFixed);
  parameters_.header().set_last_type(kFixed);
  EXPECT_TRUE(exports_.Add("Été"));
  std::string slot = PlainSlot("\x90t\x82", 1);
  slot.replace(37, 4, std::string("LF\0\0", 4));
  file += slot;
  PutLe16(file, 92, 3);
  file[106] = 1;
  EXPECT_EQ(Contents(), file);
  EXPECT_THAT(imports_.Names(), ElementsAre("Tableur", "Été"));
  EXPECT_EQ(imports_.KindOf(0), SavedKind::kPlain);
  EXPECT_EQ(imports_.KindOf(1), SavedKind::kPlain);
}

TEST_F(SavedProfilesTest, ANameOf23CharactersIsStoredWholeWithItsZero) {
  const std::string name = "ABCDEFGHIJKLMNOPQRSTUVW";
  ASSERT_EQ(name.size(), 23u);
  EXPECT_TRUE(imports_.Add(name));
  EXPECT_TRUE(imports_.Add(name + "XYZ"));
  EXPECT_THAT(imports_.Names(), ElementsAre(name, name)) << "a longer one is cut";
  EXPECT_EQ(Contents().substr(2012, 24), name + '\0');
  EXPECT_EQ(Contents().substr(2640, 24), name + '\0');
  EXPECT_EQ(Contents().size(), 2012u + 2 * 628u);
}

TEST_F(SavedProfilesTest, AddOfAMappingStoresTheLiveRowsOfTheDirection) {
  parameters_.mapping(kImport) = MappingFor(kImport, "IN");
  parameters_.mapping(kImport).file_name = OemText("CLIENTS.DBF");
  parameters_.mapping(kImport).name = OemText("IMPORT DBF");
  parameters_.mapping(kExport) = MappingFor(kExport, "OUT");
  parameters_.header().set_last_type(kDbase4);
  EXPECT_TRUE(imports_.Add("Entrant"));
  EXPECT_TRUE(exports_.Add("Sortant"));
  std::string file = NewFile() + MappingSlot("Entrant", '\xFE', "CLIENTS.DBF", 0, RowFor("IN")) +
                     MappingSlot("Sortant", '\xFF', "", 1, RowFor("OUT"));
  PutLe16(file, 92, 3);
  file[106] = 4;
  EXPECT_EQ(Contents(), file) << "the working slots stay as they were";
  EXPECT_EQ(imports_.KindOf(0), SavedKind::kDbaseImport);
  EXPECT_EQ(imports_.KindOf(1), SavedKind::kDbaseExport);
  EXPECT_EQ(parameters_.mapping(kImport).name.bytes(), "IMPORT DBF");
}

TEST_F(SavedProfilesTest, AMappingIsLoadedInItsOwnDirectionAlone) {
  EXPECT_TRUE(imports_.Add("Plain"));
  parameters_.header().set_last_type(kDbase3);
  EXPECT_TRUE(imports_.Add("Entrant"));
  EXPECT_TRUE(exports_.Add("Sortant"));
  EXPECT_TRUE(imports_.CanLoad(0));
  EXPECT_TRUE(imports_.CanLoad(1));
  EXPECT_FALSE(imports_.CanLoad(2));
  EXPECT_TRUE(exports_.CanLoad(0));
  EXPECT_FALSE(exports_.CanLoad(1));
  EXPECT_TRUE(exports_.CanLoad(2));
  EXPECT_FALSE(exports_.CanLoad(3));
}

TEST_F(SavedProfilesTest, AnyKindBelowFEhIsPlain) {
  EXPECT_TRUE(imports_.Add("x"));
  std::string file = Contents();
  file[2012 + 24] = '\xFD';
  SetContents(file);
  EXPECT_EQ(imports_.KindOf(0), SavedKind::kPlain);
}

TEST_F(SavedProfilesTest, LoadOfAPlainOneReplacesTheProfileAndTheLastFormat) {
  parameters_.profile().set_type(kFixed);
  parameters_.profile().set_field_separator("TAB");
  parameters_.header().set_last_type(kFixed);
  EXPECT_TRUE(imports_.Add("Tabulations"));
  parameters_.profile() = TransferProfile();
  parameters_.header().set_last_type(kDbase3);
  parameters_.header().set_direction(kExport);
  std::string file = Contents();
  file.replace(128 + 236, 392, std::string(392, 'x'));
  SetContents(file);

  EXPECT_TRUE(exports_.Load(0));
  EXPECT_EQ(parameters_.profile().name().bytes(), "Tabulations");
  EXPECT_EQ(parameters_.profile().field_separator(), "TAB");
  EXPECT_EQ(parameters_.header().last_type(), 1);
  std::string slot = PlainSlot("Tabulations", 1);
  slot.replace(27, 4, std::string("TAB\0", 4));
  file.replace(128, 628, slot);
  file[106] = 1;
  file[107] = 1;
  EXPECT_EQ(Contents(), file);
}

TEST_F(SavedProfilesTest, LoadOfAMappingIsCopiedOverTheWorkingSlotOfItsDirection) {
  parameters_.mapping(kImport) = MappingFor(kImport, "IN");
  parameters_.mapping(kImport).file_name = OemText("CLIENTS.DBF");
  parameters_.mapping(kExport) = MappingFor(kExport, "OUT");
  parameters_.header().set_last_type(kDbase4);
  EXPECT_TRUE(imports_.Add("Entrant"));
  EXPECT_TRUE(exports_.Add("Sortant"));
  std::string file = Contents();
  parameters_.mapping(kImport) = {};
  parameters_.mapping(kExport) = {};

  EXPECT_TRUE(imports_.Load(0));
  file.replace(756, 628, MappingSlot("Entrant", '\xFE', "CLIENTS.DBF", 0, RowFor("IN")));
  file[106] = 3;
  EXPECT_EQ(Contents(), file) << "the type is dBase III for every mapping";
  EXPECT_EQ(parameters_.header().last_type(), 3);
  EXPECT_EQ(parameters_.mapping(kImport).columns, MappingFor(kImport, "IN").columns);
  EXPECT_EQ(parameters_.mapping(kExport), DbaseMapping());
  EXPECT_EQ(parameters_.profile(), TransferProfile::OfNewInstallation());

  EXPECT_TRUE(exports_.Load(1));
  file.replace(1384, 628, MappingSlot("Sortant", '\xFF', "", 1, RowFor("OUT")));
  EXPECT_EQ(Contents(), file);
  EXPECT_EQ(parameters_.mapping(kExport).columns, MappingFor(kExport, "OUT").columns);
}

TEST_F(SavedProfilesTest, ReplaceWritesTheSlotInPlaceAndNoHeader) {
  EXPECT_TRUE(imports_.Add("un"));
  EXPECT_TRUE(imports_.Add("deux"));
  EXPECT_TRUE(imports_.Add("trois"));
  std::string file = Contents();
  parameters_.header().set_last_type(kDbase3);
  parameters_.mapping(kImport) = MappingFor(kImport, "IN");
  EXPECT_TRUE(imports_.Replace(1, "Deux bis"));
  file.replace(2012 + 628, 628, MappingSlot("Deux bis", '\xFE', "", 0, RowFor("IN")));
  EXPECT_EQ(Contents(), file);
  EXPECT_THAT(imports_.Names(), ElementsAre("un", "Deux bis", "trois"));
  EXPECT_FALSE(imports_.Replace(3, "quatre"));
  EXPECT_EQ(Contents(), file);
}

TEST_F(SavedProfilesTest, RenameWrites23BytesOfName) {
  EXPECT_TRUE(imports_.Add("un nom assez long"));
  EXPECT_TRUE(imports_.Add("deux"));
  std::string file = Contents();
  file[2012 + 23] = 'z';
  SetContents(file);
  EXPECT_TRUE(imports_.Rename(0, "court"));
  file.replace(2012, 23, Padded("court", 23, '\0'));
  EXPECT_EQ(Contents(), file) << "the byte behind the name stays";
  EXPECT_FALSE(imports_.Rename(2, "x"));
  EXPECT_EQ(Contents(), file);
}

TEST_F(SavedProfilesTest, DeleteMovesThoseBehindUpAndCutsTheFile) {
  for (const char* name : {"un", "deux", "trois", "quatre"}) EXPECT_TRUE(imports_.Add(name));
  std::string file = Contents();
  EXPECT_EQ(LoadLe16(files_.Contents(kPath), 92), 5);
  EXPECT_TRUE(imports_.Delete(1));
  file.erase(2012 + 628, 628);
  EXPECT_EQ(Contents(), file) << "the count of the header is not lowered";
  EXPECT_THAT(imports_.Names(), ElementsAre("un", "trois", "quatre"));
  EXPECT_TRUE(imports_.Delete(2));
  file.erase(2012 + 2 * 628);
  EXPECT_EQ(Contents(), file);
  EXPECT_TRUE(imports_.Delete(0));
  EXPECT_TRUE(imports_.Delete(0));
  EXPECT_EQ(Contents().size(), 2012u);
  EXPECT_THAT(imports_.Names(), IsEmpty());
  EXPECT_FALSE(imports_.Delete(0));
  EXPECT_TRUE(imports_.Add("cinq"));
  EXPECT_EQ(LoadLe16(files_.Contents(kPath), 92), 6);
  EXPECT_THAT(imports_.Names(), ElementsAre("cinq"));
}

TEST_F(SavedProfilesTest, AnOldFileKeepsThemBehindItsOwnLastFormat) {
  std::string file = NewFile();
  file = file.substr(0, 128) + std::string(100, '\0') + file.substr(128);
  PutLe16(file, 96, 228);
  PutLe16(file, 98, 856);
  PutLe16(file, 102, 1484);
  SetContents(file);
  parameters_.StartTransfer(kImport);
  parameters_.header().set_last_type(kDbase3);
  parameters_.mapping(kImport) = MappingFor(kImport, "IN");
  EXPECT_TRUE(imports_.Add("Entrant"));
  const std::string slot = MappingSlot("Entrant", '\xFE', "", 0, RowFor("IN"));
  file += slot;
  PutLe16(file, 92, 2);
  file[106] = 3;
  EXPECT_EQ(Contents(), file);
  EXPECT_TRUE(imports_.Load(0));
  file.replace(856, 628, slot);
  EXPECT_EQ(Contents(), file);
}

TEST_F(SavedProfilesTest, ATornSlotCountsWhenItsNameIsThere) {
  EXPECT_TRUE(imports_.Add("un"));
  EXPECT_TRUE(imports_.Add("deux"));
  const std::string whole = Contents();
  SetContents(whole.substr(0, 2012 + 628 + 23));
  EXPECT_THAT(imports_.Names(), ElementsAre("un"));
  SetContents(whole.substr(0, 2012 + 628 + 24));
  EXPECT_THAT(imports_.Names(), ElementsAre("un", "deux"));
  EXPECT_EQ(imports_.KindOf(1), std::nullopt) << "its kind is not there";
  EXPECT_FALSE(imports_.Load(1));
  SetContents(whole.substr(0, 2012 + 628 + 235));
  EXPECT_FALSE(imports_.Load(1)) << "the profile is not whole";
  EXPECT_TRUE(imports_.Delete(1));
  EXPECT_EQ(Contents(), whole.substr(0, 2012 + 628)) << "the one before stays whole";
}

TEST_F(SavedProfilesTest, AddBehindATornSlotKeepsThePlacesRight) {
  EXPECT_TRUE(imports_.Add("un"));
  const std::string whole = Contents();
  SetContents(whole + "abc");
  EXPECT_TRUE(imports_.Add("deux"));
  EXPECT_EQ(Contents().size(), 2012u + 2 * 628u);
  SetContents(whole.substr(0, 2012 + 100));
  EXPECT_TRUE(imports_.Add("deux"));
  EXPECT_THAT(imports_.Names(), ElementsAre("un", "deux"));
  EXPECT_EQ(Contents().size(), 2012u + 2 * 628u);
}

TEST_F(SavedProfilesTest, TheCountStopsAtItsGreatestValue) {
  parameters_.header().set_slot_count(32767);
  EXPECT_TRUE(imports_.Add("un"));
  EXPECT_EQ(LoadLe16(files_.Contents(kPath), 92), 32767);
}

TEST_F(SavedProfilesTest, WithoutAFileNothingIsStored) {
  files_.Remove(kPath);
  EXPECT_THAT(imports_.Names(), IsEmpty());
  EXPECT_FALSE(imports_.Add("un"));
  EXPECT_FALSE(files_.Exists(kPath));
}

TEST_F(SavedProfilesTest, FailedWritesAreAnswered) {
  EXPECT_TRUE(imports_.Add("un"));
  FaultFileSystem broken(files_);
  ParameterFile parameters(broken, kPath);
  parameters.StartTransfer(kImport);
  SavedProfiles profiles(parameters, kImport);
  const std::string before = Contents();
  broken.StopAfter(0);
  EXPECT_FALSE(profiles.Add("x"));
  EXPECT_FALSE(profiles.Replace(0, "x"));
  EXPECT_FALSE(profiles.Rename(0, "x"));
  EXPECT_FALSE(profiles.Load(0));
  EXPECT_FALSE(profiles.Delete(0));
  EXPECT_EQ(Contents(), before);
}

}  // namespace
}  // namespace carnetel
