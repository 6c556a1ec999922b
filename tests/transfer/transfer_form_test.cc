#include "transfer/transfer_form.h"

#include <gtest/gtest.h>

#include "platform/memory_file_system.h"
#include "storage/main_header.h"

namespace carnetel {
namespace {

using Filter = TransferCallbacks::Filter;

class TransferFormTest : public ::testing::Test {
 protected:
  TransferFormTest() { MakeDirectory("/d/CLIENTS.DAN", 0); }

  void MakeDirectory(const std::string& path, uint16_t owner) {
    MainHeader header = MainHeader::Template();
    header.BecomeEmpty();
    header.set_owner(owner);
    files_.SetContents(path, header.Block().bytes());
  }

  TransferForm& Open(TransferDirection direction, int32_t workstation = 0) {
    parameters_.StartTransfer(direction);
    TransferCallbacks callbacks;
    callbacks.browse = [this](Filter filter) {
      filters_.push_back(filter);
      return chosen_;
    };
    callbacks.set_parameters = [this](TransferForm& form) { asked_types_.push_back(form.type()); };
    callbacks.manage_profiles = [this](TransferForm&) {
      if (loaded_) parameters_.header().set_last_type(*loaded_);
    };
    callbacks.ask_replace = [this] {
      ++questions_;
      return replace_;
    };
    callbacks.run = [this](const TransferJob& job) {
      jobs_.push_back(job);
      return outcome_;
    };
    form_.emplace(direction, files_, parameters_, messages_, callbacks,
                  TransferPlace{"/d/CLIENTS.DAN", workstation, shared_dir_}, CharacterSet::kOem);
    return *form_;
  }
  TransferForm& Import(const std::string& source) {
    files_.SetContents(source, AsBytes("x"));
    TransferForm& form = Open(TransferDirection::kImport);
    form.SetForeignPath(source);
    return form;
  }
  TransferForm& Export(const std::string& destination) {
    TransferForm& form = Open(TransferDirection::kExport);
    form.SetForeignPath(destination);
    return form;
  }
  // What was shown since the last call, each as "title: text".
  std::vector<std::string> Shown() {
    std::vector<std::string> texts;
    for (size_t i = seen_; i < messages_.shown().size(); ++i) {
      const SilentMessages::Entry& entry = messages_.shown()[i];
      texts.push_back(std::string(LoadText(entry.title_id)) + ": " + entry.text);
    }
    seen_ = messages_.shown().size();
    return texts;
  }

  FakeClock clock_{1'000'000'000};
  MemoryFileSystem files_{clock_};
  ParameterFile parameters_{files_, "/home/CARNETEL.TRS"};
  SilentMessages messages_{MessageButton::kNo};
  std::string shared_dir_;
  std::optional<TransferForm> form_;
  std::optional<std::string> chosen_;
  std::optional<bool> replace_ = false;
  std::optional<TransferFileType> loaded_;
  TransferOutcome outcome_;
  std::vector<Filter> filters_;
  std::vector<TransferFileType> asked_types_;
  std::vector<TransferJob> jobs_;
  int questions_ = 0;
  size_t seen_ = 0;
};

constexpr const char* kImport = "Importation - Gestion et Paramétrage: ";
constexpr const char* kExport = "Exportation - Gestion et Paramétrage: ";

TEST_F(TransferFormTest, TheOpenDirectoryIsTheDestinationOfAnImportAndTheSourceOfAnExport) {
  TransferForm& import = Open(TransferDirection::kImport);
  EXPECT_EQ(import.destination(), "/d/CLIENTS.DAN");
  EXPECT_EQ(import.source(), "");
  EXPECT_EQ(import.ActionCaption(), "&Importer");
  EXPECT_FALSE(import.may_act());
  TransferForm& other = Open(TransferDirection::kExport);
  EXPECT_EQ(other.source(), "/d/CLIENTS.DAN");
  EXPECT_EQ(other.destination(), "");
  EXPECT_EQ(other.ActionCaption(), "&Exporter");
}

TEST_F(TransferFormTest, TheExtensionDecidesTheTypeWhileItIsTyped) {
  TransferForm& form = Open(TransferDirection::kImport);
  EXPECT_EQ(form.type(), TransferFileType::kDelimited);
  EXPECT_TRUE(form.may_set_parameters());
  form.SetForeignPath("/d/X.dan");
  EXPECT_EQ(form.type(), TransferFileType::kDirectory);
  EXPECT_FALSE(form.may_set_parameters());
  form.SetForeignPath("/d/X.txt");
  EXPECT_EQ(form.type(), TransferFileType::kDirectory);
  form.SetForeignPath("/d/X.Dbf");
  EXPECT_EQ(form.type(), TransferFileType::kDbase3);
  form.set_type(TransferFileType::kDbase4);
  form.SetForeignPath("/d/Y.DBF");
  EXPECT_EQ(form.type(), TransferFileType::kDbase4);
  EXPECT_TRUE(form.may_act());
}

TEST_F(TransferFormTest, BrowsingFiltersByTheSideAndTheType) {
  TransferForm& form = Open(TransferDirection::kImport);
  EXPECT_FALSE(form.Browse(TransferSide::kSource));
  form.set_type(TransferFileType::kDbase4);
  EXPECT_FALSE(form.Browse(TransferSide::kSource));
  form.set_type(TransferFileType::kDirectory);
  EXPECT_FALSE(form.Browse(TransferSide::kSource));
  form.set_type(TransferFileType::kFixed);
  EXPECT_FALSE(form.Browse(TransferSide::kDestination));
  EXPECT_EQ(filters_, (std::vector<Filter>{Filter::kAny, Filter::kDbase, Filter::kDirectories,
                                           Filter::kDirectories}));
  chosen_ = "/d/TABLE.DBF";
  EXPECT_TRUE(form.Browse(TransferSide::kSource));
  EXPECT_EQ(form.source(), "/d/TABLE.DBF");
  EXPECT_EQ(form.type(), TransferFileType::kDbase3);
  chosen_ = "/d/AUTRE.DAN";
  EXPECT_TRUE(form.Browse(TransferSide::kDestination));
  EXPECT_EQ(form.destination(), "/d/AUTRE.DAN");
  EXPECT_EQ(form.type(), TransferFileType::kDbase3);
}

TEST_F(TransferFormTest, ParametersAreThoseOfTheType) {
  TransferForm& form = Open(TransferDirection::kExport);
  form.SetParameters();
  form.set_type(TransferFileType::kDirectory);
  form.SetParameters();
  form.set_type(TransferFileType::kDbase3);
  form.SetParameters();
  EXPECT_EQ(asked_types_, (std::vector<TransferFileType>{TransferFileType::kDelimited,
                                                         TransferFileType::kDbase3}));
}

TEST_F(TransferFormTest, AProfileThatWasLoadedBringsItsTypeAlong) {
  TransferForm& form = Open(TransferDirection::kImport);
  loaded_ = TransferFileType::kFixed;
  form.ManageProfiles();
  EXPECT_EQ(form.type(), TransferFileType::kFixed);
}

TEST_F(TransferFormTest, ANewDestinationIsReplacedUnasked) {
  TransferForm& form = Export("/d/liste.csv");
  form.set_charset(CharacterSet::kAnsi);
  EXPECT_EQ(form.Act(), TransferForm::Outcome::kFinished);
  ASSERT_EQ(jobs_.size(), 1U);
  EXPECT_EQ(jobs_[0].source, "/d/CLIENTS.DAN");
  EXPECT_EQ(jobs_[0].destination, "/d/liste.csv");
  EXPECT_EQ(jobs_[0].charset, CharacterSet::kAnsi);
  EXPECT_TRUE(jobs_[0].replace);
  EXPECT_EQ(questions_, 0);
}

TEST_F(TransferFormTest, AnExistingDestinationIsAskedAbout) {
  TransferForm& form = Import("/d/liste.csv");
  EXPECT_EQ(form.Act(), TransferForm::Outcome::kFinished);
  replace_ = true;
  EXPECT_EQ(form.Act(), TransferForm::Outcome::kFinished);
  replace_.reset();
  EXPECT_EQ(form.Act(), TransferForm::Outcome::kStays);
  ASSERT_EQ(jobs_.size(), 2U);
  EXPECT_FALSE(jobs_[0].replace);
  EXPECT_TRUE(jobs_[1].replace);
  EXPECT_TRUE(Shown().empty());
  // Type, character set and paths are as they were.
  EXPECT_EQ(form.source(), "/d/liste.csv");
  EXPECT_EQ(form.type(), TransferFileType::kDelimited);
}

TEST_F(TransferFormTest, AFailureTellsItsMessageAndClosesTheForm) {
  TransferForm& form = Import("/d/liste.csv");
  outcome_.result = -1;
  outcome_.message = "/d/liste.csv\nErreur en lecture...";
  outcome_.title_id = 92;
  EXPECT_EQ(form.Act(), TransferForm::Outcome::kFailed);
  EXPECT_EQ(Shown(),
            std::vector<std::string>{std::string(kImport) + "/d/liste.csv\nErreur en lecture..."});
  outcome_.message.clear();
  EXPECT_EQ(form.Act(), TransferForm::Outcome::kFailed);
  EXPECT_TRUE(Shown().empty());
}

TEST_F(TransferFormTest, AForeignExtensionAndADirectoryDoNotGoTogetherOnImport) {
  TransferForm& form = Import("/d/liste.csv");
  form.set_type(TransferFileType::kDirectory);
  EXPECT_EQ(form.Act(), TransferForm::Outcome::kStays);
  EXPECT_EQ(Shown(), std::vector<std::string>{std::string(kImport) +
                                              "le fichier /d/liste.csv est incompatible avec le "
                                              "type de transfer choisi."});
  EXPECT_TRUE(jobs_.empty());
}

TEST_F(TransferFormTest, AnExportToADirectoryTakesItsExtensionWithoutAWord) {
  TransferForm& form = Export("/d/liste.csv");
  form.set_type(TransferFileType::kDirectory);
  EXPECT_EQ(form.Act(), TransferForm::Outcome::kFinished);
  EXPECT_EQ(form.destination(), "/d/liste.DAN");
  EXPECT_EQ(jobs_.at(0).destination, "/d/liste.DAN");
  EXPECT_TRUE(Shown().empty());
}

TEST_F(TransferFormTest, ATableOfAnotherTypeIsAskedAbout) {
  TransferForm& form = Import("/d/TABLE.DBF");
  form.set_type(TransferFileType::kFixed);
  EXPECT_EQ(form.Act(), TransferForm::Outcome::kStays);
  EXPECT_EQ(Shown(), std::vector<std::string>{std::string(kImport) +
                                              "Le fichier /d/TABLE.DBF est incompatible avec le "
                                              "type de transfer choisi.\nDésirez-vous poursuivre "
                                              "l'opération ?"});
  EXPECT_EQ(messages_.shown().back().style, MessageStyle::kYesNoDefaultNo);
  EXPECT_TRUE(jobs_.empty());
}

TEST_F(TransferFormTest, TheSourceMustBeAFile) {
  files_.MakeFolder("/d/dossier");
  for (const char* source : {"/d/absent.csv", "/d/dossier"}) {
    TransferForm& form = Open(TransferDirection::kImport);
    form.SetForeignPath(source);
    EXPECT_EQ(form.Act(), TransferForm::Outcome::kStays);
    EXPECT_EQ(Shown(), std::vector<std::string>{std::string(kImport) + "Accès au fichier " +
                                                source + " impossible"});
  }
  EXPECT_TRUE(jobs_.empty());
}

TEST_F(TransferFormTest, NothingIsTransferredOntoItself) {
  const std::string text = "Impossible de transférer le fichier /d/CLIENTS.DAN sur lui-même";
  for (const char* destination :
       {"/d/CLIENTS.DAN", "/d/./CLIENTS.DAN", "/d/CLIENTS.I01", "/d/CLIENTS.GRP"}) {
    TransferForm& form = Export(destination);
    EXPECT_EQ(form.Act(), TransferForm::Outcome::kStays) << destination;
    EXPECT_EQ(Shown(), std::vector<std::string>{kExport + text}) << destination;
  }
  // With directories a stem is enough, whatever the extension.
  TransferForm& form = Export("/d/CLIENTS.txt");
  form.set_type(TransferFileType::kDirectory);
  EXPECT_EQ(form.Act(), TransferForm::Outcome::kStays);
  EXPECT_EQ(Shown(), std::vector<std::string>{kExport + text});
  EXPECT_TRUE(jobs_.empty());
}

TEST_F(TransferFormTest, NorOntoTheSeatsOwnFiles) {
  shared_dir_ = "/poste/";
  files_.SetContents("/poste/CLIENTS.GRP", AsBytes("groupes"));
  TransferForm& form = Export("/poste/CLIENTS.GRP");
  EXPECT_EQ(form.Act(), TransferForm::Outcome::kStays);
  EXPECT_EQ(Shown().size(), 1U);
  // Beside the main file it is any other file.
  EXPECT_EQ(Export("/d/CLIENTS.GRP").Act(), TransferForm::Outcome::kFinished);
}

TEST_F(TransferFormTest, ADirectoryIsNotImportedIntoItself) {
  TransferForm& form = Open(TransferDirection::kImport);
  form.SetForeignPath("/d/CLIENTS.dan");
  files_.SetContents("/d/CLIENTS.dan", AsBytes("x"));
  EXPECT_EQ(form.Act(), TransferForm::Outcome::kStays);
  EXPECT_EQ(Shown().size(), 1U);
  EXPECT_TRUE(jobs_.empty());
}

TEST_F(TransferFormTest, TheOpenDirectoryIsNotExportedOntoItselfInAnotherCase) {
  TransferForm& form = Export("/d/clients.dan");
  EXPECT_EQ(form.Act(), TransferForm::Outcome::kStays);
  EXPECT_EQ(Shown().size(), 1U);
  EXPECT_TRUE(jobs_.empty());
}

TEST_F(TransferFormTest, ADirectoryThatIsThereInAnotherCaseIsAskedFor) {
  MakeDirectory("/d/AUTRE.DAN", 0);
  TransferForm& form = Export("/d/autre");
  form.set_type(TransferFileType::kDirectory);
  EXPECT_EQ(form.Act(), TransferForm::Outcome::kFinished);
  EXPECT_EQ(questions_, 1);
  ASSERT_EQ(jobs_.size(), 1U);
  EXPECT_EQ(jobs_[0].destination, "/d/AUTRE.DAN");
  EXPECT_FALSE(jobs_[0].replace);
}

TEST_F(TransferFormTest, TheDestinationOfAnImportIsAskedForInAnotherCase) {
  MakeDirectory("/d/AUTRE.DAN", 0);
  TransferForm& form = Import("/d/liste.csv");
  chosen_ = "/d/autre.dan";
  EXPECT_TRUE(form.Browse(TransferSide::kDestination));
  EXPECT_EQ(form.Act(), TransferForm::Outcome::kFinished);
  EXPECT_EQ(questions_, 1);
  ASSERT_EQ(jobs_.size(), 1U);
  EXPECT_EQ(jobs_[0].destination, "/d/AUTRE.DAN");
  EXPECT_FALSE(jobs_[0].replace);
}

TEST_F(TransferFormTest, ADirectoryOfAnotherSeatIsRefused) {
  MakeDirectory("/d/PRIVE.DAN", 4);
  for (const auto direction : {TransferDirection::kImport, TransferDirection::kExport}) {
    TransferForm& form = Open(direction, 3);
    form.SetForeignPath("/d/PRIVE.DAN");
    EXPECT_EQ(form.Act(), TransferForm::Outcome::kStays);
    const char* title = direction == TransferDirection::kImport ? kImport : kExport;
    EXPECT_EQ(Shown(),
              std::vector<std::string>{std::string(title) +
                                       "Accès refusé, Carnetel privé de:   (Poste N° 04)"});
  }
  EXPECT_TRUE(jobs_.empty());
  TransferForm& own = Open(TransferDirection::kImport, 4);
  own.SetForeignPath("/d/PRIVE.DAN");
  EXPECT_EQ(own.Act(), TransferForm::Outcome::kFinished);
  TransferForm& no_seat = Open(TransferDirection::kImport, 0);
  no_seat.SetForeignPath("/d/PRIVE.DAN");
  EXPECT_EQ(no_seat.Act(), TransferForm::Outcome::kFinished);
}

TEST_F(TransferFormTest, TypeAndLastFormatAreStoredBeforeTheRun) {
  TransferForm& form = Import("/d/fiches.bin");
  form.set_type(TransferFileType::kFixed);
  outcome_.result = -1;
  EXPECT_EQ(form.Act(), TransferForm::Outcome::kFailed);
  const std::vector<std::byte> stored = files_.Contents("/home/CARNETEL.TRS");
  EXPECT_EQ(LoadU8(stored, 106), 1);
  EXPECT_EQ(LoadU8(stored, 107), 0);
  EXPECT_EQ(LoadLe16(stored, 128 + 24), 1);
}

TEST_F(TransferFormTest, ARefusalStoresNothing) {
  TransferForm& form = Open(TransferDirection::kImport);
  const std::vector<std::byte> before = files_.Contents("/home/CARNETEL.TRS");
  form.set_type(TransferFileType::kFixed);
  form.SetForeignPath("/d/absent.bin");
  EXPECT_EQ(form.Act(), TransferForm::Outcome::kStays);
  EXPECT_EQ(files_.Contents("/home/CARNETEL.TRS"), before);
}

}  // namespace
}  // namespace carnetel
