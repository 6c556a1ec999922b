#include "shell/settings.h"

#include <gtest/gtest.h>

#include "platform/memory_file_system.h"

namespace carnetel {
namespace {

class SettingsTest : public testing::Test {
 protected:
  Settings Read(std::string_view profile) {
    files_.SetContents("/profile.ini", AsBytes(profile));
    return ReadSettings(UserProfile(files_, "/profile.ini"));
  }

  FakeClock clock_;
  MemoryFileSystem files_{clock_};
};

TEST_F(SettingsTest, MissingValuesHaveTheirDefaults) {
  const Settings settings = Read("");
  EXPECT_EQ(settings.key_field, kSte1);
  EXPECT_TRUE(settings.shows_references);
  EXPECT_EQ(settings.style_aff_list, 1);
  EXPECT_EQ(settings.style_aff_ste, 0);
  EXPECT_FALSE(settings.starts_at_first);
  EXPECT_TRUE(settings.balloons);
  EXPECT_EQ(settings.recent_directory, "");
}

TEST_F(SettingsTest, ValuesComeFromTheSectionOfTheProgram) {
  const Settings settings = Read(
      "[Autre]\nIdindex=0\n[PhoneBook-DROV]\nIdindex=10\nShowRefCor=0\nStyleAffList=3\n"
      "StyleAffSte=2\nDebutSaisie=1\nBalloons=0\nFile1=&1 /d/CLIENTS.DAN\n");
  EXPECT_EQ(settings.key_field, kNom);
  EXPECT_FALSE(settings.shows_references);
  EXPECT_EQ(settings.style_aff_list, 3);
  EXPECT_EQ(settings.style_aff_ste, 2);
  EXPECT_TRUE(settings.starts_at_first);
  EXPECT_FALSE(settings.balloons);
  EXPECT_EQ(settings.recent_directory, "/d/CLIENTS.DAN");
}

TEST_F(SettingsTest, AnIndexBelowOneIsTheCompanyIndex) {
  EXPECT_EQ(Read("[PhoneBook-DROV]\nIdindex=-3\n").key_field, kSte1);
  EXPECT_EQ(Read("[PhoneBook-DROV]\nIdindex=1\n").key_field, kNom);
}

TEST_F(SettingsTest, LabelsTakeTheStylesOfTheActiveIndex) {
  const LabelStyles company = Read("[PhoneBook-DROV]\nStyleAffSte=1\n").Labels();
  EXPECT_EQ(company.active_index, 1);
  EXPECT_EQ(company.style_aff_ste, 1);
  const LabelStyles person = Read("[PhoneBook-DROV]\nIdindex=10\nStyleAffList=2\n").Labels();
  EXPECT_EQ(person.active_index, 2);
  EXPECT_EQ(person.style_aff_list, 2);
  EXPECT_EQ(person.style_aff_emi, 2);
}

TEST_F(SettingsTest, TheDirectoryOfTheRecentFileComesFirst) {
  EXPECT_EQ(DefaultDirectory(Read(""), "/home/u/"), "/home/u/CARNETEL");
  EXPECT_EQ(DefaultDirectory(Read("[PhoneBook-DROV]\nFile1=/d/X\n"), "/home/u/"), "/d/X");
  // Only a text that begins with "&" has the menu's prefix.
  EXPECT_EQ(DefaultDirectory(Read("[PhoneBook-DROV]\nFile1=&9 /d/&Co\n"), "/h/"), "/d/&Co");
}

}  // namespace
}  // namespace carnetel
