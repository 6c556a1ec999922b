#include "tests/shell/chooser_fixture.h"

#include "selection/criteria_file.h"

namespace carnetel {

void ChooserTest::WithDirectory(const std::function<void(Directory&)>& work) {
  SilentProgress silent;
  DirectoryOptions options;
  options.path = DefaultPath();
  Directory directory({files, clock, silent}, options);
  ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
  work(directory);
  directory.Commit();
  directory.CloseDirectory();
}

void ChooserTest::MakeGroup(const std::string& name, const std::vector<uint32_t>& entries,
                            uint8_t mode, const std::string& set_name) {
  WithDirectory([&](Directory& directory) {
    for (const uint32_t entry : entries) ChangeMark(directory, entry, true);
    GroupFile groups(directory);
    (void)groups.Check();
    EXPECT_TRUE(groups.CreateGroup({OemText(name), mode}, AnsiText(set_name), 0));
    for (const uint32_t entry : entries) ChangeMark(directory, entry, false);
  });
}

void ChooserTest::SaveSet(const std::string& name, int16_t code, const std::string& value) {
  CriteriaFile file(files, DefaultPath() + ".CRT");
  file.rows().SetRow(0, {code, '0', OemText(value)});
  ASSERT_TRUE(file.AddCriteriaSet(OemText(name)));
}

}  // namespace carnetel
