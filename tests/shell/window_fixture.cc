#include "tests/shell/window_fixture.h"

#include <cstdio>
#include <filesystem>

#include "base/format_text.h"
#include "storage/card_dispatch.h"

namespace carnetel {

CardRecord CardWith(std::initializer_list<std::pair<int, std::string_view>> fields) {
  CardRecord card;
  for (const auto& [field, text] : fields) card.SetField(field, OemText(std::string(text)));
  return card;
}

void StoppingProgress::Open(ProgressForm shown, uint32_t steps_to_come) {
  form = shown;
  total = steps_to_come;
  open = true;
  steps.clear();
}

bool StoppingProgress::Step(std::string_view text) {
  steps.emplace_back(text);
  return static_cast<int>(steps.size()) == stop_at;
}

WindowFixture::WindowFixture() {
  const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
  home = std::string("/home/") + test->test_suite_name() + "." + test->name() + "/";
  memory.MakeFolder(home);
}

WindowFixture::~WindowFixture() {
  window_.reset();
  session.reset();
  RemoveLockFiles();
}

// The guards of open directories are real files, even when the directories are not.
void WindowFixture::RemoveLockFiles() {
  const auto remove = [](const std::string& stem) {
    std::error_code ignored;
    std::filesystem::remove(DirectoryGuard::LockFilePath(stem + ".ADR"), ignored);
  };
  for (const std::string& folder : {home, home + "seat/"}) {
    for (const std::string& name : memory.List(folder)) {
      remove(folder + name.substr(0, name.rfind('.')));
    }
  }
}

void WindowFixture::Build(const std::string& stem, const std::vector<CardRecord>& cards) {
  DirectoryOptions options;
  options.path = stem;
  Directory directory({files, clock, progress}, options);
  ASSERT_GE(static_cast<int>(directory.OpenDirectory()), 0);
  for (const CardRecord& card : cards) {
    directory.context().current = card;
    uint32_t position = 0;
    ASSERT_EQ(CardDispatch(directory).Add(false, &position), 0);
  }
  directory.CloseDirectory();
}

void WindowFixture::StartSession(const StartupRequest& request) {
  session = std::make_unique<Session>(
      SessionServices{files, clock, progress, messages, profile, program_starter}, request, home);
  session->Start();
}

bool WindowFixture::Start(const StartupRequest& request, int capacity) {
  StartSession(request);
  const bool opened = session->OpenAtStart(&fell_back);
  window_ = std::make_unique<MainWindowLogic>(*session, view, dialogs, capacity);
  view.Attach(*window_);
  window_->Start();
  view.DeliverPosted();
  return opened;
}

void WindowFixture::Quit() {
  EXPECT_TRUE(window_->RequestQuit());
  session->Exit();
  window_.reset();
  session.reset();
  view = FakeWindowView();
}

std::vector<WindowFixture::SavedCard> WindowFixture::Saved(const std::string& stem, int key_field) {
  MemoryFileSystem copy = memory.Snapshot();
  SilentProgress silent;
  DirectoryOptions options;
  options.path = stem;
  options.key_field = key_field;
  options.may_create = false;
  Directory directory({copy, clock, silent}, options);
  std::vector<SavedCard> cards;
  if (directory.OpenDirectory() != OpenResult::kOpened) {
    ADD_FAILURE() << stem << " cannot be opened";
    return cards;
  }
  for (uint32_t row = 0; row < directory.address().entry_count(); ++row) {
    SavedCard saved;
    saved.entry = directory.address().Entry(row);
    EXPECT_TRUE(directory.main().ReadCard(saved.entry.card_offset(), saved.card));
    cards.push_back(saved);
  }
  return cards;
}

std::vector<std::string> WindowFixture::SavedCompanies() {
  std::vector<std::string> companies;
  for (const SavedCard& saved : Saved()) companies.push_back(saved.card.FieldText(kSte1).bytes());
  return companies;
}

std::vector<std::string> WindowFixture::Rows() {
  std::vector<std::string> labels;
  for (int row = 0; row < list().row_count(); ++row) labels.push_back(list().Label(row));
  return labels;
}

std::vector<int> WindowFixture::MarkedRows() {
  std::vector<int> rows;
  for (int row = 0; row < list().row_count(); ++row) {
    if (list().IsMarked(row)) rows.push_back(row);
  }
  return rows;
}

std::string WindowFixture::Profile(std::string_view key) {
  return profile.Text("PhoneBook-DROV", key, "(missing)");
}

void WindowFixture::SetProfile(std::string_view key, std::string_view text) {
  profile.Write("PhoneBook-DROV", key, text);
}

}  // namespace carnetel
