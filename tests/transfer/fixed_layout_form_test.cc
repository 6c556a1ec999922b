#include "transfer/fixed_layout_form.h"

#include <gmock/gmock.h>

#include <memory>

#include "platform/memory_file_system.h"
#include "tests/transfer/fixed_testing.h"

namespace carnetel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kParameters[] = "/home/CARNETEL.TRS";

FixedInput Position(int line) {
  return {FixedInputKind::kPosition, line};
}
FixedInput Size(int line) {
  return {FixedInputKind::kSize, line};
}
constexpr FixedInput kFirst{FixedInputKind::kFirstCard};
constexpr FixedInput kRecord{FixedInputKind::kRecordSize};

class FixedLayoutFormTest : public testing::Test {
 protected:
  FixedLayoutForm& Open(const TransferProfile& profile) {
    parameters_.profile() = profile;
    form_ = std::make_unique<FixedLayoutForm>(parameters_, messages_, TransferDirection::kImport);
    return *form_;
  }
  // Places that do not touch each other, in records of 100 bytes.
  FixedLayoutForm& OpenSmall() {
    return Open(FixedLayout(
        0, 100, {{kSte1, {0, 10}}, {kVille, {10, 10}}, {kRef1, {20, 5}}, {kNom, {30, 10}}}));
  }
  static void Put(FixedLayoutForm& form, int line, const char* position, const char* size) {
    form.Type(Position(line), position);
    form.Type(Size(line), size);
  }
  // Texts of the messages; each must be an error.
  std::vector<std::string> Told() const {
    std::vector<std::string> texts;
    for (const SilentMessages::Entry& entry : messages_.shown()) {
      EXPECT_EQ(entry.style, MessageStyle::kError);
      EXPECT_EQ(entry.title_id, 79);
      texts.push_back(entry.text);
    }
    return texts;
  }

  FakeClock clock_{1000};
  MemoryFileSystem files_{clock_};
  ParameterFile parameters_{files_, kParameters};
  SilentMessages messages_;
  std::unique_ptr<FixedLayoutForm> form_;
};

TEST_F(FixedLayoutFormTest, ListsTheFieldsInTheOrderOfATransfer) {
  const FixedLayoutForm& form = OpenSmall();
  std::vector<std::string> labels;
  for (const int line : kFixedLayoutLines) labels.emplace_back(form.label(line));
  EXPECT_THAT(labels, ElementsAre("Société1", "Société2", "Adresse1", "Adresse2", "Cde postal",
                                  "Ville", "Pays", "Tél1", "Tél2", "N° Fax", "N° Modem", "Minitel",
                                  "Réf. 1", "Qualité", "Prénom", "Nom", "Notes"));
}

TEST_F(FixedLayoutFormTest, TheTitleFollowsTheDirection) {
  EXPECT_EQ(OpenSmall().title(), "Structure du fichier source");
  EXPECT_EQ(FixedLayoutForm(parameters_, messages_, TransferDirection::kExport).title(),
            "Structure du fichier de destination");
}

TEST_F(FixedLayoutFormTest, ShowsTheStoredLayout) {
  const FixedLayoutForm& form = Open(TransferProfile());
  EXPECT_EQ(form.text(kFirst), "768");
  EXPECT_EQ(form.text(kRecord), "768");
  EXPECT_EQ(form.text(Position(kPostalCode)), "596");
  EXPECT_EQ(form.text(Size(kPostalCode)), "14");
  EXPECT_EQ(form.text(Position(kReferenceLine)), "325");
  EXPECT_EQ(form.text(Size(kNotes)), "128") << "more digits than can be typed";
  EXPECT_EQ(form.reference(), 0);
  EXPECT_TRUE(form.confirm_enabled());
}

TEST_F(FixedLayoutFormTest, TheReferencesShareOneLine) {
  FixedLayoutForm& form = Open(TransferProfile());
  Put(form, kReferenceLine, "700", "7");
  form.SelectReference(5);
  EXPECT_EQ(form.label(kReferenceLine), "Réf. 6");
  EXPECT_EQ(form.text(Position(kReferenceLine)), "445");
  Put(form, kReferenceLine, "710", "9");
  form.SelectReference(0);
  EXPECT_EQ(form.text(Position(kReferenceLine)), "700");
  EXPECT_EQ(form.text(Size(kReferenceLine)), "7");
  form.SelectReference(5);
  EXPECT_EQ(form.text(Position(kReferenceLine)), "710");
  EXPECT_EQ(form.text(Size(kReferenceLine)), "9");
}

TEST_F(FixedLayoutFormTest, InputsTakeDigitsAndNoMoreThanTheyHold) {
  FixedLayoutForm& form = Open(TransferProfile());
  form.Type(Position(kNom), "12345");
  EXPECT_EQ(form.text(Position(kNom)), "123");
  form.Type(Size(kNom), "7a8b9");
  EXPECT_EQ(form.text(Size(kNom)), "78");
  form.Type(kFirst, "-1");
  EXPECT_EQ(form.text(kFirst), "1");
  form.Type(kRecord, "1024");
  EXPECT_EQ(form.text(kRecord), "102");
}

TEST_F(FixedLayoutFormTest, AnInputLeftEmptyBecomesZero) {
  FixedLayoutForm& form = OpenSmall();
  for (const FixedInput input :
       {kFirst, kRecord, Position(kNom), Size(kNom), Size(kReferenceLine)}) {
    form.Type(input, "");
    EXPECT_EQ(form.text(input), "") << "while it has the focus";
    form.Leave(input);
    EXPECT_EQ(form.text(input), "0");
  }
  form.Type(Position(kNom), "7");
  form.Leave(Position(kNom));
  EXPECT_EQ(form.text(Position(kNom)), "7");
}

TEST_F(FixedLayoutFormTest, ASizeAboveTheStoredCardSizeIsPutBack) {
  FixedLayoutForm& form = Open(FixedLayout(0, 50, {{kNom, {0, 20}}, {kRef1 + 1, {20, 12}}}));
  form.Type(kRecord, "99");
  form.Type(Size(kNom), "51");
  EXPECT_EQ(form.text(Size(kNom)), "20") << "the stored card size counts, not the input";
  form.Type(Size(kNom), "50");
  EXPECT_EQ(form.text(Size(kNom)), "50");
  form.SelectReference(1);
  form.Type(Size(kReferenceLine), "90");
  EXPECT_EQ(form.text(Size(kReferenceLine)), "12");
  form.Type(Position(kNom), "60");
  EXPECT_EQ(form.text(Position(kNom)), "60") << "positions are not looked at";
}

TEST_F(FixedLayoutFormTest, TheButtonFollowsTheLastChangeOfCardSizeOrCompanySize) {
  FixedLayoutForm& form = OpenSmall();
  form.Type(kRecord, "0");
  EXPECT_FALSE(form.confirm_enabled());
  form.Type(Size(kSte1), "5");
  EXPECT_TRUE(form.confirm_enabled()) << "whatever the card size is by now";
  form.Type(Size(kSte1), "");
  EXPECT_FALSE(form.confirm_enabled());
  form.Leave(Size(kSte1));
  EXPECT_FALSE(form.confirm_enabled());
  form.Type(Size(kNom), "5");
  form.Type(Position(kSte1), "5");
  form.Type(kFirst, "5");
  EXPECT_FALSE(form.confirm_enabled()) << "others do not count";
  form.Type(kRecord, "80");
  EXPECT_TRUE(form.confirm_enabled());
}

TEST_F(FixedLayoutFormTest, WithoutACardSizeTheButtonStartsDisabled) {
  FixedLayoutForm& form = Open(FixedLayout(0, 0, {}));
  EXPECT_FALSE(form.confirm_enabled());
  EXPECT_FALSE(form.Confirm());
  EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(FixedLayoutFormTest, ConfirmStoresTheLayoutAndWritesIt) {
  FixedLayoutForm& form = Open(TransferProfile());
  form.Type(kFirst, "12");
  form.Type(kRecord, "900");
  Put(form, kNom, "769", "20");
  form.SelectReference(3);
  Put(form, kReferenceLine, "800", "21");
  form.Type(Size(kSte2), "");
  ASSERT_TRUE(form.Confirm());
  EXPECT_THAT(Told(), IsEmpty());
  EXPECT_FALSE(form.focus());
  TransferProfile expected;
  expected.set_first_card_offset(12);
  expected.set_card_size(900);
  expected.set_place(kNom, {769, 20});
  expected.set_place(kRef1 + 3, {800, 21});
  expected.set_place(kSte2, {32, 0});
  EXPECT_EQ(parameters_.profile(), expected) << "all else stays, a size of 128 among it";
  ParameterFile stored(files_, kParameters);
  ASSERT_EQ(stored.AccessParameterFile(ParameterFile::Access::kRead, TransferFileType::kFixed,
                                       TransferDirection::kImport),
            0);
  EXPECT_EQ(stored.profile(), expected);
}

TEST_F(FixedLayoutFormTest, PlacesOfFieldsWithoutALineStay) {
  TransferProfile profile = FixedLayout(0, 100, {{kSte1, {0, 10}}});
  for (const int field : {kAdr3, kShortPostalCode, kSparePerson, kServiceType, kNinit, kSpare27}) {
    profile.set_place(field, {1234, -7});
  }
  FixedLayoutForm& form = Open(profile);
  form.Type(Position(kSte1), "5");
  ASSERT_TRUE(form.Confirm());
  profile.set_place(kSte1, {5, 10});
  EXPECT_EQ(parameters_.profile(), profile);
}

TEST_F(FixedLayoutFormTest, StoredValuesThatCannotBeTypedSurviveUntilEdited) {
  const Places places = {{kSte1, {0, 10}}, {kNotes, {1000, 128}}, {kPays, {-20, 15}}};
  FixedLayoutForm& form = Open(FixedLayout(1500, 2000, places));
  EXPECT_EQ(form.text(Position(kPays)), "-20");
  form.Type(Size(kNotes), "128");
  ASSERT_TRUE(form.Confirm());
  EXPECT_EQ(parameters_.profile(), FixedLayout(1500, 2000, places));
  form.Type(Size(kNotes), "127");
  EXPECT_EQ(form.text(Size(kNotes)), "12");
}

// What does not hold together is told in this order; nothing is stored then.
class FixedLayoutFormRefusal : public FixedLayoutFormTest {
 protected:
  void ExpectRefused(FixedLayoutForm& form, const std::vector<std::string>& texts,
                     std::optional<FixedInput> focus) {
    const TransferProfile before = parameters_.profile();
    EXPECT_FALSE(form.Confirm());
    EXPECT_EQ(Told(), texts);
    EXPECT_EQ(form.focus(), focus);
    EXPECT_EQ(parameters_.profile(), before);
    EXPECT_FALSE(files_.Exists(kParameters));
  }
  static std::string Outside(const std::string& label) {
    return "La rubrique \" " + label + "\"\ndépasse les limites de l'enregistrement !";
  }
  static std::string Overlap(const std::string& label, const std::string& before) {
    return "Le champ \" " + label + "\"\nrecouvre le champ \" " + before + "\" !";
  }
};

TEST_F(FixedLayoutFormRefusal, AFieldThatEndsBehindTheRecord) {
  FixedLayoutForm& form = OpenSmall();
  Put(form, kTel1, "90", "11");
  Put(form, kNom, "99", "2");
  ExpectRefused(form, {Outside("Tél1")}, Position(kTel1));
}

TEST_F(FixedLayoutFormRefusal, AFieldMayEndWithTheRecord) {
  FixedLayoutForm& form = OpenSmall();
  Put(form, kTel1, "90", "10");
  EXPECT_TRUE(form.Confirm());
}

TEST_F(FixedLayoutFormRefusal, APositionBehindTheRecordEvenWithoutASize) {
  FixedLayoutForm& form = OpenSmall();
  Put(form, kPays, "101", "0");
  ExpectRefused(form, {Outside("Pays")}, Position(kPays));
}

TEST_F(FixedLayoutFormRefusal, AReferenceThatIsNotShownIsToldOnceAndShown) {
  FixedLayoutForm& form = OpenSmall();
  form.SelectReference(2);
  Put(form, kReferenceLine, "99", "2");
  form.SelectReference(4);
  Put(form, kReferenceLine, "99", "3");
  form.SelectReference(0);
  ExpectRefused(form, {Outside("Réf. 3")}, Position(kReferenceLine));
  EXPECT_EQ(form.reference(), 2);
}

TEST_F(FixedLayoutFormRefusal, TheWalkGoesOnBehindTheReferences) {
  FixedLayoutForm& form = OpenSmall();
  Put(form, kReferenceLine, "99", "2");
  Put(form, kNom, "99", "2");
  Put(form, kNotes, "99", "2");
  ExpectRefused(form, {Outside("Réf. 1"), Outside("Nom")}, Position(kNom));
}

TEST_F(FixedLayoutFormRefusal, AFieldInFrontOfTheReferencesEndsTheWalk) {
  FixedLayoutForm& form = OpenSmall();
  Put(form, kMtel, "99", "2");
  Put(form, kReferenceLine, "99", "2");
  ExpectRefused(form, {Outside("Minitel")}, Position(kMtel));
}

TEST_F(FixedLayoutFormRefusal, ACardSizeBelowTheEndOfAFieldIsToldBeforeTheSum) {
  FixedLayoutForm& form = OpenSmall();
  form.Type(kRecord, "15");
  ExpectRefused(form, {Outside("Ville")}, Position(kVille));
}

TEST_F(FixedLayoutFormRefusal, ASumAboveTheCardSize) {
  FixedLayoutForm& form = OpenSmall();
  for (const int line : {kSte2, kPays, kVille}) Put(form, line, "0", "30");
  // All references count, shown or not: 10 + 90 + 5 + 3 + 10 for the surname.
  form.SelectReference(1);
  Put(form, kReferenceLine, "0", "3");
  ExpectRefused(form, {"Le total des tailles de rubriques (118)\nexcède la taille de la fiche !"},
                std::nullopt);
}

TEST_F(FixedLayoutFormRefusal, ASumEqualToTheCardSizeFits) {
  FixedLayoutForm& form = Open(FixedLayout(0, 20, {{kSte1, {0, 10}}, {kNom, {10, 10}}}));
  EXPECT_TRUE(form.Confirm());
}

TEST_F(FixedLayoutFormRefusal, AnOverlapNamesTheFieldAndTheOneBefore) {
  FixedLayoutForm& form = OpenSmall();
  Put(form, kNom, "19", "10");
  ExpectRefused(form, {Overlap("Nom", "Ville")}, Position(kVille));
}

TEST_F(FixedLayoutFormRefusal, EqualPositionsOverlap) {
  FixedLayoutForm& form = OpenSmall();
  Put(form, kSte2, "30", "1");
  ExpectRefused(form, {Overlap("Nom", "Société2")}, Position(kSte2));
}

TEST_F(FixedLayoutFormRefusal, TheFirstOverlapByPositionIsTold) {
  FixedLayoutForm& form = OpenSmall();
  Put(form, kSte1, "50", "10");
  Put(form, kSte2, "55", "10");
  Put(form, kPrenom, "35", "10");
  ExpectRefused(form, {Overlap("Prénom", "Nom")}, Position(kNom));
}

TEST_F(FixedLayoutFormRefusal, TheReferenceLineCountsWithWhatItShows) {
  FixedLayoutForm& form = OpenSmall();
  form.SelectReference(3);
  Put(form, kReferenceLine, "5", "5");
  ExpectRefused(form, {Overlap("Réf. 4", "Société1")}, Position(kSte1));
  form.SelectReference(0);
  EXPECT_TRUE(form.Confirm()) << "the one at fault is not shown";
}

TEST_F(FixedLayoutFormRefusal, AFieldWithoutASizeOverlapsNothing) {
  FixedLayoutForm& form = OpenSmall();
  Put(form, kPays, "35", "0");
  EXPECT_TRUE(form.Confirm());
  EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(FixedLayoutFormRefusal, AFieldWithoutASizeHidesNoOverlap) {
  FixedLayoutForm& form = OpenSmall();
  Put(form, kPays, "33", "0");
  Put(form, kTel1, "34", "3");
  ExpectRefused(form, {Overlap("Tél1", "Nom")}, Position(kNom));
}

}  // namespace
}  // namespace carnetel
