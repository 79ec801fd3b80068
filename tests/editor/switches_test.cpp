#include <gtest/gtest.h>

#include "tests/editor/fields_test.h"

namespace editor {
namespace {

using Switches = FieldsTest;

TEST_F(Switches, CustomRankingFieldsFollowTheSwitch) {
  const auto enabled = [this] {
    std::string digits;
    for (const char* const name : {"lblCustRank1", "lblCustRank2", "txtCustomRankTemplate",
                                   "txtCustomRankStart", "cmdBrowse5"}) {
      digits += ui::Control<QWidget>(Window(), name).isEnabled() ? '1' : '0';
    }
    return digits;
  };
  Open("[Main]\nuse_cust_rank=1\ncust_rank_start=77\n");
  EXPECT_EQ(enabled(), "11111");
  Click("ckUseCustomRank");
  EXPECT_EQ(enabled(), "00000");
  EXPECT_EQ(Text("txtCustomRankStart"), "77");
  Focus("ckUseCustomRank");
  Press(Qt::Key_Space);
  EXPECT_EQ(enabled(), "11111");
  Open("");
  EXPECT_EQ(enabled(), "00000");
}

}  // namespace
}  // namespace editor
