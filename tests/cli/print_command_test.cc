#include "tests/cli/cli_testing.h"

namespace carnetel {
namespace {

constexpr const char* kProfile = "/home/u/profile.ini";
constexpr size_t kCurrentRow = 102;

// Four cards, the second and the fourth marked, on pages without margins. In the heading a name
// takes the 32 characters of its field and a blank, as far as the next one leaves them.
class PrintCommandTest : public CliTest {
 protected:
  void SetUp() override {
    Done({"create"});
    Done({"add", "Ste1=Alpha", "Adr1=1 rue de l'Été", "CP=59000", "Fax=0320000001"});
    Done({"add", "Ste1=Béta", "Adr1=2 rue Hé", "CP=75011", "--mark"});
    Done({"add", "Ste1=Gamma"});
    Done({"add", "Ste1=Omega", "Notes=un\ndeux", "--mark"});
    SetSettings("Lines=64\nTopMargin=0\nLeftMargin=0\nMode=0\nType=0\n");
    Done({"layout", "set", "Ste1:6", "CP:5", "Adr1:20"});
  }

  void SetSettings(const std::string& lines) { SetFile(kProfile, "[PhoneBook-DROV]\n" + lines); }
  // The profile's value of a key.
  std::string Setting(const std::string& key) {
    const std::string text = "\n" + TextOf(kProfile);
    const size_t at = text.find("\n" + key + "=");
    if (at == std::string::npos) return "(none)";
    const size_t start = at + key.size() + 2;
    return text.substr(start, text.find('\n', start) - start);
  }
  // What is printed on standard output with these options.
  std::string Printed(const Words& options) {
    Words words = {"print", "--output", "-"};
    words.insert(words.end(), options.begin(), options.end());
    return Done(words);
  }
  // The first words of the lines below the heading.
  std::string Names(const Words& options) {
    std::istringstream lines(Printed(options));
    std::string names;
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line)) names += line.substr(0, line.find(' ')) + ' ';
    return names;
  }
  void ExpectWrong(const Words& options, const std::string& reason) {
    const std::string profile = TextOf(kProfile);
    Words words = {"print", "--output", "/t/x"};
    words.insert(words.end(), options.begin(), options.end());
    ExpectRefused(words, 2, reason);
    EXPECT_EQ(TextOf(kProfile), profile);
    EXPECT_FALSE(files_.Exists("/t/x"));
  }
  // The pages of a document, by its own count of them.
  static int PagesOf(const std::vector<std::byte>& document) {
    const std::string_view text = AsChars(document);
    int pages = 0;
    for (size_t at = text.find("/Type /Page\n"); at != text.npos;
         at = text.find("/Type /Page\n", at + 1)) {
      ++pages;
    }
    return text.starts_with("%PDF-") ? pages : -1;
  }
};

TEST_F(PrintCommandTest, TheListOnStandardOutput) {
  EXPECT_EQ(Printed({}),
            "STE1   CP    ADR1                             \n"
            "Alpha  59000 1 rue de l'Été       \n"
            "Béta   75011 2 rue Hé             \n"
            "Gamma                             \n"
            "Omega                             \n");
}

TEST_F(PrintCommandTest, TheTextFileHasTheBytesOfTheCards) {
  EXPECT_EQ(Done({"print", "--output", "/t/liste"}), "4 fiches imprimées\n");
  EXPECT_EQ(TextOf("/t/liste"),
            "STE1   CP    ADR1                             \r\n"
            "Alpha  59000 1 rue de l'\x90t\x82       \r\n"
            "B\x82ta   75011 2 rue H\x82             \r\n"
            "Gamma                             \r\n"
            "Omega                             \r\n");
}

TEST_F(PrintCommandTest, WholeCards) {
  EXPECT_EQ(Printed({"--mode", "card", "--row", "4"}),
            "Quali                         \n"
            "Preno                         \n"
            "Nom                                   \n"
            "Ste1  Omega                           \n"
            "Ste2                                  \n"
            "Adr1                                  \n"
            "Adr2                                  \n"
            "CP                  \n"
            "Ville                                 \n"
            "Pays                                  \n"
            "Tel1                          \n"
            "Tel2                          \n"
            "Fax                        \n"
            "Modem                      \n"
            "Mtel                       \n"
            "Ref1                          \n"
            "Ref2                          \n"
            "Ref3                          \n"
            "Ref4                          \n"
            "Ref5                          \n"
            "Ref6                          \n"
            "Notes un\n"
            "deux                                                        \n"
            "\n"
            "\n");
}

TEST_F(PrintCommandTest, ScopeSaysWhichCards) {
  EXPECT_EQ(Names({"--scope", "file"}), "Alpha Béta Gamma Omega ");
  EXPECT_EQ(Names({"--scope", "selection"}), "Béta Omega ");
  EXPECT_EQ(Names({"--scope", "current", "--row", "3"}), "Gamma ");
  // Kept from run to run.
  EXPECT_EQ(Setting("Type"), "2");
  EXPECT_EQ(Names({"--row", "1"}), "Alpha ");
  EXPECT_EQ(Names({"--row", "@768"}), "Alpha ");
}

TEST_F(PrintCommandTest, TheCurrentCardIsThatOfTheList) {
  std::string address = TextOf("/d/CLIENTS.ADR");
  address[kCurrentRow] = 2;
  SetFile("/d/CLIENTS.ADR", address);
  EXPECT_EQ(Names({"--scope", "current"}), "Gamma ");
}

TEST_F(PrintCommandTest, AGroupPrintsItsMembersAndItsMarks) {
  Done({"group", "create", "Nord"});
  Done({"mark", "4", "--group", "Nord"});
  Done({"mark", "1"});
  EXPECT_EQ(Names({"--group", "NORD"}), "Béta Omega ");
  EXPECT_EQ(Names({"--group", "Nord", "--scope", "selection"}), "Omega ");
  EXPECT_EQ(Names({"--group", "Nord", "--row", "2"}), "Béta ");
  ExpectRefused({"print", "--output", "-", "--group", "Nord", "--row", "3"}, 1,
                "la fiche de la ligne 3 n'est pas dans le groupe");
  ExpectRefused({"print", "--output", "-", "--group", "Sud"}, 1, "pas de groupe « Sud »");
  EXPECT_EQ(Names({"--scope", "selection"}), "Alpha Béta Omega ");
  ExpectConsistent();
}

TEST_F(PrintCommandTest, MarginsAndLinesBreakThePages) {
  // Two empty lines, the heading, one card a page of four lines; three characters on the left.
  Done({"layout", "set", "Ste1:6"});
  EXPECT_EQ(Printed({"--lines", "4", "--top", "179", "--left", "120", "--scope", "selection"}),
            "\n\n   STE1                             \n   Béta   \n"
            "\f\n\n   STE1                             \n   Omega  \n");
  EXPECT_EQ(Setting("Lines"), "4");
  EXPECT_EQ(Setting("TopMargin"), "179");
  EXPECT_EQ(Setting("LeftMargin"), "120");
}

TEST_F(PrintCommandTest, WhatIsNotGivenComesFromTheProfileAndWhatWasUsedStaysThere) {
  SetSettings("Lines=3\nTopMargin=60\nLeftMargin=40\nMode=0\nType=1\nPrintType=1\nFileToPrint=f\n");
  Done({"layout", "set", "Ste1:6"});
  EXPECT_EQ(Printed({}),
            "\n STE1                             \n Béta   \n"
            "\f\n STE1                             \n Omega  \n");
  Printed({"--lines", "127", "--top", "0", "--left", "999", "--mode", "card", "--scope", "file"});
  EXPECT_EQ(TextOf(kProfile),
            "[PhoneBook-DROV]\nLines=127\nTopMargin=0\nLeftMargin=999\nMode=1\nType=0\n"
            "PrintType=1\nFileToPrint=f\n");
}

TEST_F(PrintCommandTest, WithoutAProfileTheDefaultsAreThoseOfTheUnit) {
  files_.Remove(kProfile);
  Printed({});
  EXPECT_EQ(TextOf(kProfile),
            "[PhoneBook-DROV]\nLines=64\nTopMargin=200\nLeftMargin=200\nMode=0\nType=1\n"
            "PrintType=0\nFileToPrint=carn.prn\n");
  files_.Remove(kProfile);
  metric_ = false;
  Printed({});
  EXPECT_EQ(Setting("TopMargin"), "80");
  EXPECT_EQ(Setting("LeftMargin"), "80");
}

TEST_F(PrintCommandTest, OnlyATextFileIsKeptAsTheDestination) {
  Done({"print", "--output", "/t/liste"});
  EXPECT_EQ(Setting("PrintType"), "1");
  EXPECT_EQ(Setting("FileToPrint"), "/t/liste");
  Done({"print", "--pdf", "/t/liste.pdf"});
  Printed({});
  EXPECT_EQ(Setting("PrintType"), "1");
  Done({"print"});
  EXPECT_EQ(Setting("PrintType"), "0");
  EXPECT_EQ(Setting("FileToPrint"), "/t/liste");
  Done({"print", "--pdf", "/t/liste.pdf"});
  EXPECT_EQ(Setting("PrintType"), "0");
  // The window would look for a bare name beside the directory.
  Done({"print", "--output", "ici.txt"});
  EXPECT_EQ(Setting("FileToPrint"), "/ici.txt");
  EXPECT_TRUE(files_.Exists("/ici.txt"));
}

TEST_F(PrintCommandTest, ALongerFileKeepsItsTail) {
  SetFile("/t/liste", std::string(300, '#'));
  Done({"print", "--output", "/t/liste"});
  const std::string text = TextOf("/t/liste");
  EXPECT_EQ(text.size(), 300U);
  EXPECT_TRUE(text.starts_with("STE1 "));
  EXPECT_TRUE(text.ends_with("\r\n" + std::string(300 - text.find('#'), '#')));
}

TEST_F(PrintCommandTest, PathsKeepTheirCase) {
  SetFile("/t/LISTE", "#");
  Done({"print", "--output", "/t/liste"});
  EXPECT_EQ(TextOf("/t/LISTE"), "#");
  EXPECT_TRUE(files_.Exists("/t/liste"));
}

TEST_F(PrintCommandTest, TheFamilyIsNotPrintedOver) {
  const std::string profile = TextOf(kProfile);
  for (const char* option : {"--output", "--pdf"}) {
    for (const std::string path : {"/d/CLIENTS.DAN", "/d/clients.dan", "/d/x/../CLIENTS.GRP"}) {
      ExpectRefused({"print", option, path}, 1,
                    path + " est un fichier du carnetel : rien n'y est imprimé");
    }
  }
  EXPECT_EQ(TextOf(kProfile), profile);
}

TEST_F(PrintCommandTest, AFileThatCannotBeOpenedOrWritten) {
  const std::string profile = TextOf(kProfile);
  ExpectRefused({"print", "--output", "/d"}, 1, "/d : Périphérique inaccessible !");
  ExpectRefused({"print", "--output", "/d/CLIENTS.DAN/x"}, 1,
                "/d/CLIENTS.DAN/x : Périphérique inaccessible !");
  EXPECT_EQ(TextOf(kProfile), profile);
  Done({"print", "--output", "/t/liste"});
  SetFile("/t/vide", "");
  disk_.FillDisk();
  const CliOutcome full = On({"print", "--output", "/t/vide"});
  EXPECT_EQ(full.status, 1);
  EXPECT_EQ(full.out, "");
  EXPECT_NE(full.err.find("Erreur : /t/vide : Périphérique inaccessible !\n"), std::string::npos)
      << full.err;
  disk_.Heal();
  const std::string longest(260, 'x');
  ExpectRefused({"print", "--output", "/" + longest}, 1,
                "/" + longest + " : un chemin a 260 octets au plus");
}

TEST_F(PrintCommandTest, AProfileThatCannotBeWrittenIsToldAndTheRunGoesOn) {
  // A folder in its place.
  SetFile("/p/inside", "");
  const CliOutcome outcome = On({"--profile", "/p", "print", "--output", "/t/liste"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NE(outcome.err.find("Attention : la mise en page n'est pas retenue : "
                             "Accès au fichier /p impossible\n"),
            std::string::npos)
      << outcome.err;
  EXPECT_TRUE(files_.Exists("/t/liste"));
}

TEST_F(PrintCommandTest, WrongValuesAreWrongUsageAndNothingIsWritten) {
  for (const char* lines : {"0", "128", "-1", "x", ""}) {
    ExpectWrong({"--lines", lines}, "--lines demande un nombre de 1 à 127");
  }
  for (const char* margin : {"1000", "1,5", "2cm", ""}) {
    ExpectWrong({"--top", margin}, "--top demande un nombre de 0 à 999");
    ExpectWrong({"--left", margin}, "--left demande un nombre de 0 à 999");
  }
  ExpectWrong({"--mode", "cards"}, "--mode : « cards » n'est pas parmi list, card");
  ExpectWrong({"--scope", ""}, "--scope : «  » n'est pas parmi file, selection, current");
  ExpectWrong({"--row", "1", "--scope", "file"}, "--row n'a de sens qu'avec --scope current");
  ExpectWrong({"--row", "un"}, "« un » n'est ni une ligne ni une @position");
  ExpectWrong({"--pdf", "/t/y"}, "--output et --pdf s'excluent");
  ExpectWrong({"4"}, "argument en trop : 4");
  ExpectRefused({"print", "--output", ""}, 2, "--output demande un fichier");
  ExpectRefused({"print", "--pdf", ""}, 2, "--pdf demande un fichier");
  ExpectRefused({"print", "--pdf", "-"}, 2,
                "--pdf demande un fichier ; la sortie standard est pour --output");
  ExpectRefused({"print", "--output", "-", "--row", "5"}, 1, "pas de fiche à la ligne 5");
}

TEST_F(PrintCommandTest, InInchesMarginsGoTo396) {
  metric_ = false;
  ExpectWrong({"--top", "397"}, "--top demande un nombre de 0 à 396");
  EXPECT_NE(Printed({"--top", "396"}), "");
  // What the profile says about the unit goes first.
  SetFile(kProfile, "[intl]\niMeasure=0\n");
  EXPECT_EQ(On({"print", "--output", "-", "--top", "397"}).status, 0);
}

TEST_F(PrintCommandTest, TheJsonFormHasCardsAndPages) {
  EXPECT_EQ(Done({"--json", "print", "--output", "/t/liste"}), "{\"cards\":4,\"pages\":1}\n");
  EXPECT_EQ(Done({"--json", "print", "--pdf", "/t/pdf", "--lines", "3"}),
            "{\"cards\":4,\"pages\":2}\n");
  EXPECT_EQ(Done({"--json", "print", "--row", "1"}), "{\"cards\":1,\"pages\":1}\n");
  EXPECT_EQ(Done({"print", "--row", "1"}), "1 fiche imprimée\n");
  const CliOutcome both = On({"--json", "print", "--output", "-"});
  EXPECT_EQ(both.status, 2);
  EXPECT_EQ(both.out, "");
  EXPECT_EQ(both.err,
            "{\"error\":\"--json et --output - s'excluent : la sortie standard est au texte "
            "imprimé\"}\n");
}

TEST_F(PrintCommandTest, WithoutMarkedCardsNothingIsPrintedAndThatIsTold) {
  Done({"unmark", "--all"});
  const std::string warning = "Attention : aucune fiche n'est marquée : rien n'est imprimé\n";
  const CliOutcome text = On({"print", "--output", "-", "--scope", "selection"});
  EXPECT_EQ(text.status, 0);
  EXPECT_EQ(text.out, "");
  EXPECT_EQ(text.err, warning);
  const CliOutcome printer = On({"--json", "print"});
  EXPECT_EQ(printer.out, "{\"cards\":0,\"pages\":0}\n");
  EXPECT_EQ(printer.err, warning);
  EXPECT_TRUE(programs_.empty());
}

TEST_F(PrintCommandTest, APdfReplacesTheFileThatIsThere) {
  EXPECT_EQ(Done({"print", "--pdf", "/t/a.pdf", "--lines", "2"}), "4 fiches imprimées\n");
  EXPECT_EQ(PagesOf(files_.Contents("/t/a.pdf")), 4);
  SetFile("/t/a.pdf", std::string(100'000, '#'));
  Done({"print", "--pdf", "/t/a.pdf", "--lines", "64"});
  EXPECT_EQ(PagesOf(files_.Contents("/t/a.pdf")), 1);
  EXPECT_EQ(files_.List("/t"), std::vector<std::string>{"a.pdf"});
  EXPECT_TRUE(programs_.empty());
}

TEST_F(PrintCommandTest, APdfThatCannotBeWrittenLeavesTheOldOne) {
  SetFile("/t/a.pdf", "old");
  disk_.FillDisk();
  ExpectRefused({"print", "--pdf", "/t/a.pdf"}, 1, "/t/a.pdf : Périphérique inaccessible !");
  EXPECT_EQ(TextOf("/t/a.pdf"), "old");
  EXPECT_EQ(files_.List("/t"), std::vector<std::string>{"a.pdf"});
  disk_.Heal();
  ExpectRefused({"print", "--pdf", "/t"}, 1, "/t : Périphérique inaccessible !");
}

TEST_F(PrintCommandTest, ThePaperOfAPdfGoesWithTheUnit) {
  const auto has = [this](const std::string& box) {
    Done({"print", "--pdf", "/t/a.pdf"});
    return TextOf("/t/a.pdf").find("/MediaBox [ 0 0 " + box) != std::string::npos;
  };
  EXPECT_TRUE(has("595.276 841.89"));
  metric_ = false;
  EXPECT_TRUE(has("612 792 ]"));
}

TEST_F(PrintCommandTest, ThePrinterOfTheSystemGetsADocument) {
  EXPECT_EQ(Done({"print", "--lines", "3"}), "4 fiches imprimées\n");
  ASSERT_EQ(programs_.size(), 1U);
  const Words& program = programs_.front();
  ASSERT_EQ(program.size(), 5U);
  EXPECT_EQ(Words(program.begin(), program.end() - 1),
            (Words{"lp", "-t", "CARNETEL - CLIENTS.DAN", "--"}));
  EXPECT_TRUE(program.back().starts_with("/home/u/carnetel/")) << program.back();
  EXPECT_EQ(PagesOf(handed_over_), 2);
  EXPECT_NE(AsChars(handed_over_).find("/Title <FEFF00430041"), std::string_view::npos);
  EXPECT_TRUE(files_.List("/home/u/carnetel").empty());
}

TEST_F(PrintCommandTest, ThePrinterThatWasChosenGoesFirst) {
  SetFile("/home/u/carnetel/CARNETEL.INI", "[devices]\nPrinter=Laser,HP, Model 4,ipp://host/x\n");
  Done({"print"});
  ASSERT_EQ(programs_.size(), 1U);
  EXPECT_EQ(Words(programs_[0].begin(), programs_[0].end() - 1),
            (Words{"lp", "-d", "Laser", "-t", "CARNETEL - CLIENTS.DAN", "--"}));
}

TEST_F(PrintCommandTest, APrinterThatCannotBeReached) {
  for (const int status : {-1, 1, 130}) {
    program_status_ = status;
    ExpectRefused({"print"}, 1, "Périphérique inaccessible !");
    EXPECT_TRUE(files_.List("/home/u/carnetel").empty());
  }
}

TEST_F(PrintCommandTest, AnInterruptedRunHandsNothingOver) {
  Done({"print"});
  programs_.clear();
  interrupt_after_ = 2;
  ExpectRefused({"print"}, 1, "impression abandonnée");
  EXPECT_TRUE(programs_.empty());
  ExpectRefused({"print", "--pdf", "/t/a.pdf"}, 1, "impression abandonnée");
  EXPECT_FALSE(files_.Exists("/t/a.pdf"));
  ExpectRefused({"print", "--output", "/t/liste"}, 1, "impression abandonnée");
  const CliOutcome text = On({"print", "--output", "-"});
  EXPECT_EQ(text.status, 1);
  EXPECT_LT(text.out.size(), 200U);
}

TEST_F(PrintCommandTest, AScriptPrintsSeveralTimes) {
  SetFile("/t/script", "print --row 1 --output -\nprint --row 3 --output -\nprint\n");
  EXPECT_EQ(Done({"batch", "/t/script"}),
            Printed({"--row", "1"}) + Printed({"--row", "3"}) + "1 fiche imprimée\n");
  EXPECT_EQ(programs_.size(), 1U);
}

}  // namespace
}  // namespace carnetel
