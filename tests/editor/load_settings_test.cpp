#include <gtest/gtest.h>

#include "tests/editor/fields_test.h"

namespace editor {
namespace {

using Load = FieldsTest;

TEST_F(Load, EveryEncodingReachesItsField) {
  Open(
      "[main]\nlimit_overall_killtables=01\nuse_cust_rank=2\nuse_db=yes\n"
      "players_min_time= 900 \nTIME_FORMAT=\"%X %x\"\nsrc_path=./templates\ndest_path=a/b\\c\n"
      "use_main_log=10\nuse_logparser_log=20\nuse_templateparser_log=5\nuse_customrank_log=-3\n"
      "[LOGS]\nnumber_of_logs=3\nlogpath0=first.log\nlogpath2=third, with a comma\n"
      "[GAME]\ngame_complete=2\nmin_players=\n"
      "[html]\nbg_color=red\nlink_color=#00ff00\nvlink_color=ff\nalink_color=no color\n"
      "name9=#123456\nbg_image=C:\\back.jpg\nfile_ext=htm\n"
      "[kill tables]\nhilite_levels=2\nhilite_level0=100\nhilite_color0=#00ff00\n"
      "hilite_level1=x\ncolumn0=#ff0000\ncolumn1=red\n"
      "[templates]\nmain_templates_number=1\nmain_template0=stats\nmap_templates_number=-1\n"
      "map_template0=unread\n"
      "[user vars]\n  b  =1\n; comment\na=x, y\nb=2\n");

  EXPECT_TRUE(Checked("ckLimitKillTables"));
  EXPECT_FALSE(Checked("ckUseCustomRank")) << "only 1 checks it";
  EXPECT_FALSE(Box("txtCustomRankTemplate").isEnabled());
  EXPECT_FALSE(Checked("ckUseDatabase"));
  EXPECT_TRUE(Checked("ckGameCompleted")) << "all but 0 check it";
  EXPECT_EQ(Text("txtPlayersMinTime"), "900");
  EXPECT_EQ(Text("txtTimeFormat"), "%X %x");
  EXPECT_EQ(Text("txtSrcPath"), ".\\templates");
  EXPECT_EQ(Text("txtDestPath"), "a\\b\\c");
  EXPECT_EQ(Text("txtDbPath"), "");
  EXPECT_EQ(Text("txtMinPlayers"), "");
  EXPECT_EQ(Text("txtBkgndImage"), "C:\\back.jpg");
  EXPECT_EQ(Text("txtFileExtension"), "htm");
  EXPECT_EQ(Checks({"ckMainFileNorm", "ckMainScrnNorm", "ckMainFileSevr", "ckMainScrnSevr"}),
            "0101");
  EXPECT_EQ(Checks({"ckLogFileNorm", "ckLogScrNorm", "ckLogFileSevere", "ckLogScrSevere"}), "1111");
  EXPECT_EQ(Checks({"ckTemplateFileNorm", "ckTemplateScrNorm", "ckTemplateFileSevere",
                    "ckTemplateScrSevere"}),
            "1010");
  EXPECT_EQ(Checks({"ckRankFileNorm", "ckRankScrNorm", "ckRankFileSevere", "ckRankScrSevere"}),
            "0000");
  EXPECT_EQ(Entries("lstLogFiles"), (QStringList{"first.log", "", "third, with a comma"}));
  EXPECT_EQ(Entries("lstTemplates"), QStringList{"stats"});
  EXPECT_EQ(Entries("lstMapTemplates"), QStringList());
  EXPECT_EQ(Entries("lvwHiliteLevels"), (QStringList{"100|#00ff00", "x|"}));
  EXPECT_EQ(Entries("lvwUserVars"), (QStringList{"b|1", "a|x, y", "b|1"}));
  EXPECT_EQ(Color("cmdBGColor"), 0x0000FF);
  EXPECT_EQ(Color("cmdLinkColor"), 0x00FF00);
  EXPECT_EQ(Color("cmdVLinkColor"), 0x0000FF);
  EXPECT_EQ(Color("cmdALinkColor"), 0) << "no color counts as black";
  EXPECT_EQ(Color("cmdTextColor"), 0);
  EXPECT_EQ(Color("cmdNameColor(9)"), 0x563412);
  EXPECT_EQ(Color("cmdColumnColor(0)"), 0x0000FF);
  EXPECT_EQ(Color("cmdColumnColor(1)"), 0) << "columns know no names";
}

TEST_F(Load, DamagedFilesOpen) {
  std::string binary;
  for (int i = 0; i < 70000; ++i) binary += static_cast<char>((i * 7919) >> 3);
  for (const std::string& bytes :
       {std::string(), std::string("[\n=\n[]\n]]\n;\r\n\r[Main]\rsrc_path=./a"), binary,
        std::string(3, '\0'), std::string("\xFF\xFE[\0M\0a\0i\0n\0]\0\n\0", 16),
        std::string("[Logs]\nnumber_of_logs=1e99")}) {
    Open(bytes);
    EXPECT_EQ(Status(), "Ready.");
    EXPECT_EQ(File(), bytes);
  }
}

}  // namespace
}  // namespace editor
