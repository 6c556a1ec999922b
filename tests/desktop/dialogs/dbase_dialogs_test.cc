// The two dialogs about the columns of dBase tables, as their user meets them.
#include <memory>

#include "desktop/controls/window_messages.h"
#include "desktop/dialogs/dbase_export_dialog.h"
#include "desktop/dialogs/dbase_import_dialog.h"
#include "platform/memory_file_system.h"
#include "tests/desktop/dialogs/dialog_pictures.h"
#include "tests/desktop/dialogs/named_controls.h"

namespace carnetel::desktop {
namespace {

constexpr char kParameters[] = "/CARNETEL.TRS";
constexpr auto kType = TransferFileType::kDbase3;
constexpr auto kImport = TransferDirection::kImport;
constexpr auto kExport = TransferDirection::kExport;

class DbaseDialogTest : public ::testing::Test {
 protected:
  void SetUp() override { parameters.StartTransfer(kImport); }
  void Watch(QDialog* opened) {
    finished = std::make_unique<QSignalSpy>(opened, &QDialog::finished);
    help =
        std::make_unique<QSignalSpy>(qobject_cast<FixedDialog*>(opened), &FixedDialog::helpWanted);
    Show(*opened);
  }
  int End() { return finished->count() == 1 ? finished->at(0).at(0).toInt() : -1; }
  QList<int> HelpTopics() {
    QList<int> topics;
    for (const auto& asked : *help) topics += asked.at(0).toInt();
    return topics;
  }
  // The mapping in the file; nothing when none was stored.
  std::optional<DbaseMapping> Saved(TransferDirection direction) {
    ParameterFile file(files, kParameters);
    const auto read = ParameterFile::Access::kRead;
    if (file.AccessParameterFile(read, kType, direction) < 0) return {};
    return file.mapping(direction);
  }

  FakeClock clock{1'000'000'000};
  MemoryFileSystem files{clock};
  ParameterFile parameters{files, kParameters};
  std::unique_ptr<QSignalSpy> finished;
  std::unique_ptr<QSignalSpy> help;
};

class DbaseImportDialogTest : public DbaseDialogTest {
 protected:
  // A table of five columns, none of which goes anywhere.
  void Open() {
    dialog.reset();
    parameters.mapping(kImport) = {};
    constexpr const char* kNames[] = {"RAISON", "RUE", "CP", "LOCALITE", "TELEPHONE99"};
    for (size_t column = 0; column < std::size(kNames); ++column) {
      DbaseColumn& row = parameters.mapping(kImport).columns[column];
      row.name = OemText(kNames[column]);
      row.length = 20;
    }
    for (DbaseColumn& row : parameters.mapping(kImport).columns) row.map = 5;
    OpenOnMapping();
  }
  void OpenOnMapping() {
    form = std::make_unique<DbaseImportForm>(parameters, "/data/CLIENTS.DBF", kType);
    dialog = std::make_unique<DbaseImportDialog>(*form, nullptr);
    dialog->SetBeeper([this] { ++beeps; });
    Watch(dialog.get());
  }
  QString Text(const QString& name) { return TextOf(*dialog, name); }
  int SavedMap(int field) { return Saved(kImport)->columns[static_cast<size_t>(field)].map; }

  std::unique_ptr<DbaseImportForm> form;
  std::unique_ptr<DbaseImportDialog> dialog;
  int beeps = 0;
};

TEST_F(DbaseImportDialogTest, HasItsTitleAndTexts) {
  Open();
  EXPECT_EQ(dialog->objectName(), "120");
  EXPECT_EQ(dialog->windowTitle(), "Importation - Paramètres du fichier Dbase");
  EXPECT_EQ(Named<QPushButton>(*dialog, "previous")->text().remove('&'), "Précédente Config");
  EXPECT_EQ(Find<QPushButton>(*dialog, 1)->text(), "Valider");
  EXPECT_EQ(Find<QPushButton>(*dialog, 2)->text(), "Abandonner");
  EXPECT_EQ(Find<QPushButton>(*dialog, 500)->text(), "?");
  ExpectNames(*dialog);
}

TEST_F(DbaseImportDialogTest, EveryFieldButTheNotesHasAListOfTheColumns) {
  Open();
  for (const int field : kDbaseFields) {
    if (field > kRef1 && field <= kRef6) continue;
    const QString name = QStringLiteral("column_%1").arg(field);
    EXPECT_EQ(Rows(*dialog, name),
              (QStringList{"RAISON", "RUE", "CP", "LOCALITE", "TELEPHONE99", ""}));
    EXPECT_EQ(Text(name), "");
  }
  EXPECT_EQ(dialog->findChild<QWidget*>("column_26"), nullptr);
  ExpectWheelChangesNothing(*dialog);
}

TEST_F(DbaseImportDialogTest, ConfirmStoresTheColumnsAndCloses) {
  Open();
  Pick(*dialog, "column_0", 0);
  Pick(*dialog, "column_25", 2);
  Press(*dialog, 1);
  EXPECT_EQ(End(), QDialog::Accepted);
  ASSERT_TRUE(Saved(kImport));
  EXPECT_EQ(SavedMap(kSte1), 0);
  EXPECT_EQ(SavedMap(kPostalCode), 2);
  EXPECT_EQ(SavedMap(kVille), 5);
  EXPECT_EQ(Saved(kImport)->file_name.bytes(), "CLIENTS.DBF");
}

TEST_F(DbaseImportDialogTest, TheReferencesShareOneList) {
  Open();
  Pick(*dialog, "column_12", 1);
  Pick(*dialog, "reference", 5);
  EXPECT_EQ(Text("column_12"), "");
  Pick(*dialog, "column_12", 3);
  Pick(*dialog, "reference", 0);
  EXPECT_EQ(Text("column_12"), "RUE");
  PressKey(Qt::Key_Return);
  EXPECT_EQ(SavedMap(kRef1), 1);
  EXPECT_EQ(SavedMap(kRef6), 3);
}

TEST_F(DbaseImportDialogTest, ThePreviousColumnsComeBack) {
  Open();
  Pick(*dialog, "column_0", 1);
  Press(*dialog, 1);
  // Another table, of other columns.
  parameters.mapping(kImport) = {};
  parameters.mapping(kImport).columns[0].name = OemText("NOM");
  parameters.mapping(kImport).columns[0].length = 9;
  OpenOnMapping();
  EXPECT_EQ(Rows(*dialog, "column_0"), (QStringList{"NOM", ""}));
  PressNamed(*dialog, "previous");
  EXPECT_EQ(Rows(*dialog, "column_0").size(), 6);
  EXPECT_EQ(Text("column_0"), "RUE");
  EXPECT_EQ(Text("column_10"), "");
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(beeps, 0);
}

TEST_F(DbaseImportDialogTest, WithoutPreviousColumnsItBeeps) {
  Open();
  Pick(*dialog, "column_0", 1);
  PressNamed(*dialog, "previous");
  EXPECT_EQ(beeps, 1);
  EXPECT_EQ(Text("column_0"), "RUE");
}

TEST_F(DbaseImportDialogTest, AbandonAndEscapeStoreNothing) {
  Open();
  Pick(*dialog, "column_0", 1);
  Press(*dialog, 2);
  EXPECT_EQ(End(), QDialog::Rejected);
  Open();
  Pick(*dialog, "column_0", 1);
  PressKey(Qt::Key_Escape);
  EXPECT_EQ(End(), QDialog::Rejected);
  EXPECT_FALSE(Saved(kImport));
}

TEST_F(DbaseImportDialogTest, KeyboardAndHelp) {
  Open();
  const QStringList stops = TabNames();
  EXPECT_EQ(stops.front(), "column_0");
  EXPECT_EQ(stops.mid(11, 4), (QStringList{"column_20", "reference", "column_12", "column_8"}));
  EXPECT_EQ(stops.mid(17), (QStringList{"column_11", "previous", "1", "2", "500"}));
  Press(*dialog, 500);
  PressKey(Qt::Key_F1);
  EXPECT_EQ(HelpTopics(), (QList<int>{58, 58}));
}

TEST_F(DbaseImportDialogTest, Pictures) {
  for (const int percent : {100, 200}) {
    const LettersAt letters(percent);
    Open();
    Pick(*dialog, "column_0", 0);
    Pick(*dialog, "column_18", 4);
    EXPECT_LT(dialog->width(), 1000);
    EXPECT_LT(dialog->height(), 700);
    SavePicture(*dialog, QStringLiteral("dbase_import"), percent);
  }
}

class DbaseExportDialogTest : public DbaseDialogTest {
 protected:
  void Open() {
    dialog.reset();
    form = std::make_unique<DbaseExportForm>(parameters, kType);
    dialog = std::make_unique<DbaseExportDialog>(*form, nullptr);
    for (auto* edit : dialog->findChildren<FilteredEdit*>()) {
      edit->SetBeeper([this] { ++beeps; });
    }
    Watch(dialog.get());
  }
  QString Text(const QString& name) { return TextOf(*dialog, name); }
  DbaseColumn SavedColumn(int field) { return Saved(kExport)->columns[static_cast<size_t>(field)]; }

  std::unique_ptr<DbaseExportForm> form;
  std::unique_ptr<DbaseExportDialog> dialog;
  int beeps = 0;
};

TEST_F(DbaseExportDialogTest, HasItsTitleAndTexts) {
  Open();
  EXPECT_EQ(dialog->objectName(), "121");
  EXPECT_EQ(dialog->windowTitle(), "Exportation - Paramètres du fichier Dbase");
  EXPECT_EQ(dialog->findChild<QWidget*>("previous"), nullptr);
  EXPECT_EQ(Find<QPushButton>(*dialog, 1)->text(), "Valider");
  EXPECT_EQ(Find<QPushButton>(*dialog, 2)->text(), "Abandonner");
  ExpectNames(*dialog);
}

TEST_F(DbaseExportDialogTest, OffersTheUsualColumns) {
  Open();
  const std::pair<int, const char*> columns[] = {
      {0, "STE1"},   {1, "STE2"},        {2, "ADRESSE1"},    {3, "ADRESSE2"}, {25, "CODEPOST"},
      {6, "VILLE"},  {7, "PAYS"},        {8, "QUALITE"},     {9, "PRENOM"},   {10, "NOM"},
      {11, "VIDE"},  {18, "TELEPHONE1"}, {19, "TELEPHONE2"}, {20, "MINITEL"}, {22, "TELECOPIE"},
      {24, "MODEM"}, {12, "REFERENCE1"}};
  for (const auto& [field, name] : columns) {
    EXPECT_EQ(Text(QStringLiteral("name_%1").arg(field)), name);
    EXPECT_EQ(Rows(*dialog, QStringLiteral("type_%1").arg(field)),
              (QStringList{" C ", " N ", " D "}));
    EXPECT_EQ(Text(QStringLiteral("type_%1").arg(field)), " C ");
  }
  EXPECT_EQ(dialog->findChild<QWidget*>("name_26"), nullptr);
  ExpectWheelChangesNothing(*dialog);
}

TEST_F(DbaseExportDialogTest, ANameTakesElevenCharacters) {
  Open();
  TypeInto(*dialog, "name_0", "RAISON_SOCIALE");
  EXPECT_EQ(Text("name_0"), "RAISON_SOCI");
  EXPECT_EQ(beeps, 3);
}

TEST_F(DbaseExportDialogTest, ConfirmStoresNamesAndTypes) {
  Open();
  TypeInto(*dialog, "name_0", "RAISON");
  TypeInto(*dialog, "name_11", "");
  Pick(*dialog, "type_25", 1);
  Pick(*dialog, "reference", 2);
  EXPECT_EQ(Text("name_12"), "REFERENCE3");
  TypeInto(*dialog, "name_12", "NE LE");
  Pick(*dialog, "type_12", 2);
  Pick(*dialog, "reference", 0);
  EXPECT_EQ(Text("name_12"), "REFERENCE1");
  EXPECT_EQ(Text("type_12"), " C ");
  Press(*dialog, 1);
  EXPECT_EQ(End(), QDialog::Accepted);
  ASSERT_TRUE(Saved(kExport));
  EXPECT_EQ(SavedColumn(kSte1).name.bytes(), "RAISON");
  EXPECT_EQ(SavedColumn(kSparePerson).name.bytes(), "");
  EXPECT_EQ(SavedColumn(kPostalCode).type, DbaseType::kNumber);
  EXPECT_EQ(SavedColumn(kRef1 + 2).name.bytes(), "NE LE");
  EXPECT_EQ(SavedColumn(kRef1 + 2).type, DbaseType::kDate);
  Open();
  EXPECT_EQ(Text("name_0"), "RAISON");
}

TEST_F(DbaseExportDialogTest, AbandonAndEscapeStoreNothing) {
  Open();
  TypeInto(*dialog, "name_0", "RAISON");
  Press(*dialog, 2);
  EXPECT_EQ(End(), QDialog::Rejected);
  Open();
  TypeInto(*dialog, "name_0", "RAISON");
  PressKey(Qt::Key_Escape);
  EXPECT_EQ(End(), QDialog::Rejected);
  EXPECT_FALSE(Saved(kExport));
}

TEST_F(DbaseExportDialogTest, KeyboardAndHelp) {
  Open();
  const QStringList stops = TabNames();
  EXPECT_EQ(stops.mid(0, 3), (QStringList{"name_0", "type_0", "name_1"}));
  EXPECT_EQ(stops.mid(24, 3), (QStringList{"reference", "name_12", "type_12"}));
  EXPECT_EQ(stops.last(3), (QStringList{"1", "2", "500"}));
  EXPECT_EQ(stops.size(), 2 * 17 + 1 + 3);
  PressKey(Qt::Key_F1);
  Press(*dialog, 500);
  EXPECT_EQ(HelpTopics(), (QList<int>{59, 59}));
  TypeInto(*dialog, "name_0", "X");
  PressKey(Qt::Key_Return);
  EXPECT_EQ(End(), QDialog::Accepted);
}

TEST_F(DbaseExportDialogTest, Pictures) {
  for (const int percent : {100, 200}) {
    const LettersAt letters(percent);
    Open();
    EXPECT_LT(dialog->width(), 1000);
    EXPECT_LT(dialog->height(), 700);
    SavePicture(*dialog, QStringLiteral("dbase_export"), percent);
  }
}

}  // namespace
}  // namespace carnetel::desktop
