// The folder of the pages and the list in it of what was written: random histories against a model,
// and everything that may lie in the list's place.
#include "morvane/site/page_folder.h"

#include <gtest/gtest.h>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "tests/morvane/test_support.h"

namespace morvane::test {
namespace {

namespace fs = std::filesystem;

using Files = std::map<std::string, std::string>;

const Inputs kNoInputs;

bool KeepNone(const std::string& /*name*/) { return false; }

/// One run that makes these pages.
PageFolder& MakePages(PageFolder& folder, const Files& pages) {
  for (const auto& [name, content] : pages) EXPECT_FALSE(folder.Write(name, content)) << name;
  return folder;
}

void RunOnce(const fs::path& path, const Files& pages) {
  std::error_code error;
  PageFolder folder(path, kNoInputs, error);
  ASSERT_FALSE(error);
  EXPECT_FALSE(MakePages(folder, pages).Finish(KeepNone));
}

Files FilesOf(const fs::path& folder) {
  Files files;
  for (const auto& entry : fs::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    if (name != PageList::kFileName) files[name] = ReadFile(entry.path());
  }
  return files;
}

TEST(PageFolder, WritesWhatChangesAndCleansUp) {
  TempFolder temporary;
  const fs::path folder = temporary.Path() / "a" / "b";
  std::error_code error;
  PageFolder(folder, kNoInputs, error).Write("page.html", "old");
  ASSERT_FALSE(error);
  WriteFile(folder / ".page.html.unfinished-1-1", "half");
  PageFolder pages(folder, kNoInputs, error);
  EXPECT_FALSE(pages.Write("page.html", "old"));
  EXPECT_FALSE(pages.Write("other.html", "new"));
  EXPECT_EQ(pages.Unchanged(), 1U);
  EXPECT_EQ(pages.Written(), 1U);
  EXPECT_FALSE(fs::exists(folder / ".page.html.unfinished-1-1"));
  EXPECT_TRUE(pages.Write("no/such/folder.html", "x"));
}

/// What a person sees in the folder, and which of it the engine wrote.
struct Model {
  Files files;
  /// By name: what the last run that came to its end wrote, and those cut short since.
  std::map<std::string, std::set<std::string>> written;

  bool IsOurs(const std::string& name) const {
    const auto known = written.find(name);
    const auto file = files.find(name);
    return known != written.end() && file != files.end() && known->second.contains(file->second);
  }
};

// Runs that make other pages each time, that are cut short, that fail to read a template; and a
// person who changes, removes and adds files meanwhile.
TEST(PageFolder, TakesAwayItsOwnPagesAloneInEveryHistory) {
  std::mt19937 random(20260);
  const auto below = [&](int end) { return std::uniform_int_distribution(0, end - 1)(random); };
  const std::vector<std::string> names = {"a.html", "b.html", "c-2.html", "%41 b.html", "d.htm"};
  for (int history = 0; history < 60; ++history) {
    TempFolder temporary;
    Model model;
    for (int step = 0; step < 25; ++step) {
      const std::string& name = names[static_cast<std::size_t>(below(5))];
      const std::string content = std::to_string(below(3));
      if (below(3) == 0) {  // a person
        if (below(3) == 0) {
          fs::remove(temporary.Path() / name);
          model.files.erase(name);
        } else {
          WriteFile(temporary.Path() / name, content);
          model.files[name] = content;
        }
        continue;
      }
      Files pages;
      for (const std::string& page : names) {
        if (below(2) == 0) pages[page] = std::to_string(below(3));
      }
      std::error_code error;
      PageFolder folder(temporary.Path(), kNoInputs, error);
      MakePages(folder, pages);
      const bool isCutShort = below(4) == 0;
      const bool keepsFirst = below(4) == 0;
      if (!isCutShort) {
        EXPECT_FALSE(
            folder.Finish([&](const std::string& page) { return keepsFirst && page == names[0]; }));
        for (const std::string& page : names) {
          if (pages.contains(page) || (keepsFirst && page == names[0])) continue;
          if (model.IsOurs(page)) model.files.erase(page);
          model.written.erase(page);
        }
        // A page that somebody changed is that person's from now on.
        if (!pages.contains(names[0]) && !model.IsOurs(names[0])) model.written.erase(names[0]);
        for (const auto& [page, text] : pages) model.written[page].clear();
      }
      for (const auto& [page, text] : pages) {
        model.files[page] = text;
        model.written[page].insert(text);
      }
      ASSERT_EQ(FilesOf(temporary.Path()), model.files) << history << ", step " << step;
    }
  }
}

// Settings change: what an earlier run wrote may be a template today, and the list's place a log.
TEST(PageFolder, AnInputIsNeitherReplacedNorTakenAwayNorListed) {
  TempFolder temporary;
  const fs::path path = temporary.Path();
  RunOnce(path, {{"style.css", "page"}, {"old.html", "old"}});
  Inputs inputs;
  inputs.Add(path / "*.css");
  std::error_code error;
  {
    PageFolder folder(path, inputs, error);
    EXPECT_FALSE(folder.Write("style.css", "page"));
    EXPECT_EQ(folder.Write("style.css", "other"), IsAnInput());
    EXPECT_TRUE(folder.HoldsForeign("style.css", error));
    EXPECT_FALSE(folder.HoldsForeign("old.html", error));
    EXPECT_FALSE(folder.Finish(KeepNone));
  }
  EXPECT_EQ(FilesOf(path), (Files{{"style.css", "page"}}));
  RunOnce(path, {});
  EXPECT_EQ(FilesOf(path), (Files{{"style.css", "page"}})) << "it is the user's from then on";

  RunOnce(path, {{"old.html", "old"}});
  const std::string list = ReadFile(path / PageList::kFileName);
  inputs.Add(path / PageList::kFileName);
  PageFolder unlisted(path, inputs, error);
  EXPECT_FALSE(unlisted.Write("new.html", "new"));
  EXPECT_EQ(unlisted.Finish(KeepNone), IsAnInput());
  EXPECT_EQ(ReadFile(path / PageList::kFileName), list);
  EXPECT_TRUE(fs::exists(path / "old.html"));
}

TEST(PageFolder, AnythingMayLieInTheListsPlace) {
  TempFolder outside;
  WriteFile(outside.Path() / "own.html", "own");
  const std::string own = "3 " + TextOf(Describe("own").digest) + " - ";
  const std::string parent = outside.Path().filename().string();
  const std::string header = "morvane pages 1\n";
  const std::vector<std::string> lists = {
      "",
      "morvane pages 2\n" + own + "kept.html\n",
      own + "kept.html\n",
      header + own + "../" + parent + "/own.html\n",
      header + own + "..%2f" + parent + "/own.html\n",
      header + own + (outside.Path() / "own.html").string() + "\n",
      header + own + "link.html\n" + own + "linked/own.html\n" + own + "folder\n",
      header + own + "..\n" + own + ".\n" + own + "\n" + own + ".morvane-pages\n",
      header + "3 " + std::string(32, 'x') + " - kept.html\n",
      header + "3 " + TextOf(Describe("own").digest).substr(1) + " - kept.html\n",
      header + "-3 " + TextOf(Describe("own").digest) + " - kept.html\n",
      header + "4 " + TextOf(Describe("own").digest) + " - kept.html\n",
      header + "3  " + TextOf(Describe("own").digest) + " - kept.html\n",
      header + "3 " + TextOf(Describe("own").digest) + " kept.html\n",
      header + own + "kept.html",  // cut off
      header + own + "kept%2.html\n" + own + "kept%zz.html\n",
      header + std::string(100000, '\0') + std::string(100000, '\xFF') + "\n",
  };
  for (const std::string& list : lists) {
    TempFolder temporary;
    const fs::path& path = temporary.Path();
    WriteFile(path / PageList::kFileName, list);
    for (const char* name : {"kept.html", "kept%2.html", "kept%zz.html"}) {
      WriteFile(path / name, "own");
    }
    fs::create_symlink(outside.Path() / "own.html", path / "link.html");
    fs::create_directory_symlink(outside.Path(), path / "linked");
    fs::create_directory(path / "folder");
    const Files before = FilesOf(path);
    RunOnce(path, {});
    EXPECT_EQ(FilesOf(path), before) << list;
    EXPECT_EQ(ReadFile(outside.Path() / "own.html"), "own") << list;
    RunOnce(path, {{"new.html", "new"}});
    RunOnce(path, {});
    EXPECT_EQ(FilesOf(path), before) << "a list that can be used is there again: " << list;
  }
}

TEST(PageFolder, TheListIsNeverAWayOut) {
  TempFolder temporary;
  const fs::path pages = temporary.Path() / "pages";
  WriteFile(temporary.Path() / "victim", "own");
  fs::create_directories(pages);
  fs::create_symlink(temporary.Path() / "victim", pages / PageList::kFileName);
  RunOnce(pages, {{"a.html", "a"}});
  EXPECT_EQ(ReadFile(temporary.Path() / "victim"), "own");
  RunOnce(pages, {});
  EXPECT_EQ(FilesOf(pages), Files());
  EXPECT_FALSE(fs::exists(pages / PageList::kFileName)) << "a list of nothing";
}

// A list is read as far as it goes, and what a run notes that is cut short is read by the next one,
// whatever the list was before. Its last line end may be that of the next note.
TEST(PageFolder, ATornListHidesNoPageOfARunCutShort) {
  TempFolder temporary;
  const fs::path list = temporary.Path() / PageList::kFileName;
  RunOnce(temporary.Path(), {{"a.html", "a"}, {"b.html", "b"}});
  const std::string whole = ReadFile(list);
  for (std::size_t size = 0; size <= whole.size(); ++size) {
    WriteFile(list, whole.substr(0, size));
    WriteFile(temporary.Path() / "b.html", "b");
    {
      std::error_code error;
      PageFolder folder(temporary.Path(), kNoInputs, error);
      MakePages(folder, {{"c.html", "c"}, {"d.html", "d"}});
    }
    RunOnce(temporary.Path(), {});
    EXPECT_EQ(fs::exists(temporary.Path() / "b.html"), size + 1 < whole.size()) << size;
    EXPECT_FALSE(fs::exists(temporary.Path() / "c.html")) << size;
    EXPECT_FALSE(fs::exists(temporary.Path() / "d.html")) << size;
  }
}

TEST(PageList, KeepsWhatIsKnownOfAPage) {
  TempFolder temporary;
  const fs::path path = temporary.Path() / PageList::kFileName;
  WrittenPage page = Describe("a");
  page.fingerprint = {1, 0xab};
  page.changedAt = 1234567890123456789;
  std::error_code error;
  PageList list(temporary.Path(), error);
  EXPECT_FALSE(list.Replace({{"a b%.html", page}, {"c", Describe("c")}}, {{"a key", "10 %"}}));
  EXPECT_EQ(ReadFile(path),
            "morvane pages 1\n: a%20key 10%20%25\n1 " + TextOf(page.digest) +
                " 000000000000000100000000000000ab@1234567890123456789 a%20b%25.html\n1 " +
                TextOf(Describe("c").digest) + " - c\n");
  const PageList again(temporary.Path(), error);
  ASSERT_EQ(again.Earlier().size(), 2U);
  EXPECT_EQ(again.Find("a b%.html").front().page, page);
  EXPECT_EQ(again.Find("c").front().page, Describe("c"));
  EXPECT_EQ(again.Remarked(), (PageList::Remarks{{"a key", "10 %"}}));
  EXPECT_TRUE(again.Find("b").empty());
}

}  // namespace
}  // namespace morvane::test
