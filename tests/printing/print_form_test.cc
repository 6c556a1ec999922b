// The print form: what a run keeps, where it goes, and what it says when it cannot.
#include "printing/print_form.h"

#include "printing/list_layout.h"
#include "tests/printing/printing_testing.h"

namespace carnetel {
namespace {

constexpr char kSection[] = "PhoneBook-DROV";
constexpr char kPrinterFile[] = "/home/CARNETEL.INI";

class PrintFormTest : public PrintingTest {
 protected:
  void SetUp() override {
    AddCompanies({"ALPHA", "BETA", "CHARLIE"});
    printers.installed = {{"Laser", "HP LaserJet 4", "usb://1"},
                          {"Matricielle", "Epson LX", "lpt1"}};
  }
  // A form that prints the whole file as a list, one narrow column, without margins.
  [[nodiscard]] std::unique_ptr<PrintForm> MakeForm() {
    const PrintServices services = {messages, profile, kSection, printers,
                                    [this](PrinterChoiceForm& form) { return choose(form); }};
    auto form = std::make_unique<PrintForm>(*directory, services, place);
    form->setup().top_margin = 0;
    form->setup().left_margin = 0;
    form->setup().scope = PrintScope::kFile;
    LayoutFile layout(files, kLayout);
    EXPECT_TRUE(layout.SaveComposition(CompositionOf({{ChoiceOfField(kPostalCode), 7}})));
    return form;
  }
  // Prints into this file, and answers what Print does.
  bool PrintToFile(const std::string& path) {
    const auto form = MakeForm();
    form->setup().destination = PrintDestination::kFile;
    form->setup().file = path;
    return form->Print();
  }
  // The one message since the start.
  void ExpectError(const std::string& text) {
    ASSERT_EQ(messages.shown().size(), 1U);
    EXPECT_EQ(messages.shown().front().style, MessageStyle::kError);
    EXPECT_EQ(MessageTitle(messages.shown().front().title_id), "Erreur");
    EXPECT_EQ(messages.shown().front().text, text);
  }
  void ExpectRefused(const std::string& path, const std::string& family_file) {
    (void)MakeForm();  // the layout file is there from now on
    const FileBytes before = files.Contents(family_file);
    EXPECT_FALSE(PrintToFile(path)) << path;
    EXPECT_TRUE(SameBytes(before, files.Contents(family_file)));
    ExpectError("Périphérique inaccessible !");
  }

  // A page of three cards without text in that column.
  const std::string list_text = "CP             \r\n        \r\n        \r\n        \r\n";
  SilentMessages messages;
  FakePrinters printers;
  std::function<bool(PrinterChoiceForm&)> choose = [](PrinterChoiceForm&) {
    ADD_FAILURE() << "no choice of a printer was expected";
    return false;
  };
  PrintPlace place = {kPrinterFile, "CARNETEL", 0, MeasureUnit::kCentimetres};
};

TEST_F(PrintFormTest, OpensWithTheProfilesValues) {
  profile.Write(kSection, "Lines", "50");
  profile.Write(kSection, "PrintType", "1");
  profile.Write(kSection, "FileToPrint", "liste.txt");
  const PrintServices services = {messages, profile, kSection, printers, choose};
  PrintForm form(*directory, services, place);
  EXPECT_EQ(form.unit(), MeasureUnit::kCentimetres);
  EXPECT_EQ(form.setup().lines, 50);
  EXPECT_EQ(form.setup().top_margin, 200);
  EXPECT_TRUE(form.prints_to_file());
  EXPECT_EQ(form.setup().file, "liste.txt");
  place.unit = MeasureUnit::kInches;
  EXPECT_EQ(PrintForm(*directory, services, place).setup().top_margin, 80);
}

TEST_F(PrintFormTest, ARunKeepsThePageSetup) {
  const auto form = MakeForm();
  form->setup() = {
      20, 120, 80, Presentation::kCards, PrintScope::kCurrent, PrintDestination::kFile, "a.txt"};
  EXPECT_TRUE(form->Print());
  EXPECT_EQ(ReadPageSetup(profile, kSection, MeasureUnit::kCentimetres), form->setup());
  EXPECT_EQ(profile.Int(kSection, "Type", -1), 2);
}

TEST_F(PrintFormTest, ARunThatFailsKeepsItToo) {
  const auto form = MakeForm();
  form->setup().lines = 33;
  printers.start = PrinterStart::kCancelled;
  EXPECT_FALSE(form->Print());
  EXPECT_EQ(profile.Int(kSection, "Lines", -1), 33);
}

TEST_F(PrintFormTest, APathIsCutAt260Bytes) {
  const std::string kept = "/out/" + std::string(255, 'x');
  EXPECT_TRUE(PrintToFile(kept + "yyy"));
  EXPECT_EQ(Contents(kept), list_text);
  EXPECT_EQ(profile.Text(kSection, "FileToPrint", ""), kept);
}

TEST_F(PrintFormTest, ABareNameLiesBesideTheDirectory) {
  EXPECT_TRUE(PrintToFile("liste.txt"));
  EXPECT_EQ(Contents("/dir/liste.txt"), list_text);
  EXPECT_EQ(PrintPath("/a/b/X.DAN", "liste.txt"), "/a/b/liste.txt");
  EXPECT_EQ(PrintPath("/a/b/X.DAN", "/c/liste.txt"), "/c/liste.txt");
  EXPECT_EQ(PrintPath("/a/b/X.DAN", "c/liste.txt"), "c/liste.txt");
}

TEST_F(PrintFormTest, APathWithAFolderStaysAsItIs) {
  EXPECT_TRUE(PrintToFile("/out/liste.txt"));
  EXPECT_EQ(Contents("/out/liste.txt"), list_text);
  EXPECT_TRUE(messages.shown().empty());
}

TEST_F(PrintFormTest, ALongerFileKeepsItsTail) {
  files.SetContents("/out/liste.txt", AsBytes(std::string(list_text.size(), 'x') + "tail"));
  EXPECT_TRUE(PrintToFile("/out/liste.txt"));
  EXPECT_EQ(Contents("/out/liste.txt"), list_text + "tail");
}

TEST_F(PrintFormTest, AFileInAnotherCaseIsTheSameFile) {
  files.SetContents("/out/LISTE.TXT", AsBytes("old"));
  EXPECT_TRUE(PrintToFile("/out/liste.txt"));
  EXPECT_EQ(Contents("/out/LISTE.TXT"), list_text);
  EXPECT_FALSE(files.Exists("/out/liste.txt"));
}

TEST_F(PrintFormTest, AFileThatCannotBeOpenedIsInaccessible) {
  files.MakeFolder("/out/folder/");
  EXPECT_FALSE(PrintToFile("/out/folder"));
  ExpectError("Périphérique inaccessible !");
}

TEST_F(PrintFormTest, WithoutANameThereIsNoFile) {
  EXPECT_FALSE(PrintToFile(""));
  ExpectError("Périphérique inaccessible !");
}

TEST_F(PrintFormTest, AFullDiskIsTold) {
  const auto form = MakeForm();
  form->setup().destination = PrintDestination::kFile;
  form->setup().file = "/out/liste.txt";
  WritePageSetup(profile, kSection, form->setup());
  faults.FillDisk();
  EXPECT_FALSE(form->Print());
  EXPECT_EQ(Contents("/out/liste.txt"), "");
  ExpectError("Périphérique inaccessible !");
}

TEST_F(PrintFormTest, TheMainFileIsRefused) {
  ExpectRefused("CLIENTS.DAN", kMain);
}

TEST_F(PrintFormTest, TheMainFileIsRefusedUnderAnotherSpelling) {
  ExpectRefused("/out/../dir/CLIENTS.DAN", kMain);
}

TEST_F(PrintFormTest, TheMainFileIsRefusedInAnotherCase) {
  ExpectRefused("clients.dan", kMain);
}

TEST_F(PrintFormTest, DerivedFilesAreRefused) {
  ExpectRefused("/dir/CLIENTS.ADR", "/dir/CLIENTS.ADR");
}

TEST_F(PrintFormTest, TheLayoutFileIsRefused) {
  ExpectRefused("Clients.lst", kLayout);
}

TEST_F(PrintFormTest, ARunOnAPrinterHasItsDocument) {
  const auto form = MakeForm();
  form->setup().lines = 30;
  EXPECT_TRUE(form->Print());
  ASSERT_EQ(printers.jobs.size(), 1U);
  const PrintJob& job = printers.jobs.front();
  EXPECT_EQ(job.document, "CARNETEL - CLIENTS.DAN");
  EXPECT_EQ(job.printer, "");
  EXPECT_EQ(job.columns, 15U);
  EXPECT_EQ(job.lines, 30);
  EXPECT_EQ(PagesText(*printers.printed), "CP             \n        \n        \n        \n");
  EXPECT_EQ(printers.ends, 1);
  EXPECT_TRUE(messages.shown().empty());
}

TEST_F(PrintFormTest, TheChosenPrinterIsOfferedFirst) {
  EXPECT_TRUE(StoredPrinter(files, kPrinterFile).Write(printers.installed[1]));
  const auto form = MakeForm();
  EXPECT_TRUE(form->Print());
  EXPECT_EQ(printers.jobs.front().printer, "Matricielle");
}

TEST_F(PrintFormTest, WithoutADeviceThereIsAMessage) {
  printers.start = PrinterStart::kNoDevice;
  EXPECT_FALSE(MakeForm()->Print());
  ExpectError("Périphérique inaccessible !");
  EXPECT_EQ(PagesText(*printers.printed), "");
  EXPECT_EQ(printers.ends, 0);
}

TEST_F(PrintFormTest, ARefusingPrintManagerHasItsOwn) {
  printers.start = PrinterStart::kFailed;
  EXPECT_FALSE(MakeForm()->Print());
  ExpectError("Problème avec le gestionnaire d'impression");
  EXPECT_EQ(PagesText(*printers.printed), "");
  EXPECT_EQ(printers.ends, 0);
}

TEST_F(PrintFormTest, ACancelledDialogIsSilent) {
  printers.start = PrinterStart::kCancelled;
  EXPECT_FALSE(MakeForm()->Print());
  EXPECT_TRUE(messages.shown().empty());
  EXPECT_EQ(PagesText(*printers.printed), "");
  EXPECT_EQ(printers.ends, 0);
}

TEST_F(PrintFormTest, AnAbandonedRunEndsWithoutAWord) {
  class Abandoned : public FakePrinters {
   public:
    PrintTarget& target() override { return ended; }
    class EndedTarget : public PrintTarget {
     public:
      [[nodiscard]] PrintText text() const override { return PrintText::kAnsi; }
      void PrintLine(std::string_view) override { ADD_FAILURE() << "a line after the end"; }
      void NewPage() override { ADD_FAILURE() << "a page after the end"; }
      [[nodiscard]] bool Ended() const override { return true; }
    } ended;
  };
  Abandoned abandoned;
  PrintForm form(*directory, {messages, profile, kSection, abandoned, choose}, place);
  EXPECT_TRUE(form.Print());
  EXPECT_EQ(abandoned.ends, 1);
  EXPECT_TRUE(messages.shown().empty());
}

TEST_F(PrintFormTest, AFormPrintsMoreThanOnce) {
  const auto form = MakeForm();
  EXPECT_TRUE(form->Print());
  form->setup().scope = PrintScope::kSelection;
  EXPECT_TRUE(form->Print());
  EXPECT_EQ(PagesText(*printers.printed), "");
  form->setup().destination = PrintDestination::kFile;
  form->setup().scope = PrintScope::kFile;
  form->setup().file = "liste.txt";
  EXPECT_TRUE(form->Print());
  EXPECT_EQ(Contents("/dir/liste.txt"), list_text);
  EXPECT_EQ(printers.ends, 2);
}

TEST_F(PrintFormTest, TheListIsPrintedAsItWasSavedLast) {
  const auto form = MakeForm();
  form->layout().Default();
  RecordedPages before(10);
  form->Preview(before);
  EXPECT_TRUE(before.pages.front().front().starts_with("CP "));
  EXPECT_TRUE(form->layout().Save());
  RecordedPages after(10);
  form->Preview(after);
  EXPECT_TRUE(after.pages.front().front().starts_with("STE1 "));
  EXPECT_EQ(form->Columns(), 30U + 1 + 30 + 1 + 5 + 1 + 21 + 1);
}

TEST_F(PrintFormTest, APreviewKeepsNothing) {
  const auto form = MakeForm();
  form->setup().lines = 33;
  RecordedPages pages(10);
  form->Preview(pages);
  EXPECT_EQ(pages.pages.front().size(), 4U);
  EXPECT_FALSE(files.Exists("/profile.ini"));
  EXPECT_TRUE(printers.jobs.empty());
}

TEST_F(PrintFormTest, TheCurrentCardIsThatOfTheList) {
  place.current_entry = 2;
  const auto form = MakeForm();
  form->setup().scope = PrintScope::kCurrent;
  EXPECT_TRUE(form->layout().Save());
  RecordedPages pages(10);
  form->Preview(pages);
  EXPECT_TRUE(pages.pages.front()[1].starts_with("CHARLIE"));
}

TEST_F(PrintFormTest, AConfirmedChoiceChangesThePrinter) {
  const auto form = MakeForm();
  EXPECT_EQ(form->PrinterText(), "@@@");
  choose = [](PrinterChoiceForm& choice) {
    choice.Select(1);
    return true;
  };
  EXPECT_TRUE(form->Configure());
  EXPECT_EQ(form->PrinterText(), "Matricielle sur lpt1");
}

TEST_F(PrintFormTest, AnAbandonedChoiceChangesNothing) {
  const auto form = MakeForm();
  choose = [](PrinterChoiceForm& choice) {
    choice.Select(1);
    return false;
  };
  EXPECT_FALSE(form->Configure());
  EXPECT_EQ(form->PrinterText(), "@@@");
}

TEST_F(PrintFormTest, WithoutPrintersTheChoiceDoesNotOpen) {
  printers.installed.clear();
  EXPECT_FALSE(MakeForm()->Configure());
}

TEST_F(PrintFormTest, ASeatHasItsOwnLayout) {
  directory->CloseDirectory();
  files.MakeFolder("/seat/");
  DirectoryOptions options;
  options.path = kMain;
  options.shared_dir = "/seat/";
  directory = std::make_unique<Directory>(DirectoryServices{faults, clock, progress}, options);
  ASSERT_TRUE(IsOpen(directory->OpenDirectory()));
  const PrintServices services = {messages, profile, kSection, printers, choose};
  PrintForm form(*directory, services, place);
  EXPECT_TRUE(files.Exists("/seat/CLIENTS.LST"));
  EXPECT_FALSE(files.Exists(kLayout));
  form.setup().destination = PrintDestination::kFile;
  form.setup().file = "/seat/clients.lst";
  EXPECT_FALSE(form.Print());
  ExpectError("Périphérique inaccessible !");
}

}  // namespace
}  // namespace carnetel
