#include "config/profile_text.h"

#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/config/naive_text.h"

namespace config {
namespace {

struct ReadCase {
  const char* what;
  std::string file;
  std::string value;  // of [Main] key
};

TEST(ProfileText, ReadsAValue) {
  using namespace std::string_literals;
  const ReadCase cases[] = {
      {"plain", "[Main]\r\nkey=value\r\n", "value"},
      {"names in any case, blanks around everything", " [ mAIN\t] x\n \tKEY  = v w\t\n", "v w"},
      {"first of a repeated key", "[Main]\nkey=1\nkey=2\n", "1"},
      {"second section of the name", "[Main]\na=1\n[b]\n[Main]\nkey=2\n", "2"},
      {"not from another section", "[Other]\nkey=1\n[Main]\nkey=2", "2"},
      {"header without its bracket", "[Main\nkey=1\n", "1"},
      {"only the first equals sign", "[Main]\nkey=a=b\n", "a=b"},
      {"double quotes", "[Main]\nkey=\" a \"\n", " a "},
      {"single quotes, one pair only", "[Main]\nkey=''a''\n", "'a'"},
      {"quotes that do not match", "[Main]\nkey=\"a'\n", "\"a'"},
      {"nothing in quotes", "[Main]\nkey=\"\"\n", ""},
      {"one quote", "[Main]\nkey=\"\n", "\""},
      {"commented out", "[Main]\n;key=1\n//key=2\n ;key=3\nkey=4\n", "4"},
      {"lone carriage returns", "[Main]\rkey=1\rkey2=2\r", "1"},
      {"UTF-8 mark", "\xEF\xBB\xBF[Main]\nkey=1\n", "1"},
      {"UTF-8", "[Main]\nkey=\xC3\xA9\n", "\xC3\xA9"},
      {"Windows-1252", "[Main]\nkey=\xE9\x80\n", "\xC3\xA9\xE2\x82\xAC"},
      {"NUL ends it", "[Main]\nkey=ab\0cd\n"s, "ab"},
      {"no value", "[Main]\nkey=\n", ""},
  };
  for (const ReadCase& test : cases) {
    EXPECT_EQ(ProfileText(test.file).Get("Main", "key"), test.value) << test.what;
  }
}

TEST(ProfileText, FindsNothingThatIsNotThere) {
  for (const char* file : {"", "key=1\n", "[Main]\nkey\n", "[Other]\nkey=1\n", "[]\nkey=1\n",
                           "\xFF\xFE[\0M\0", "[Main]\n[key=1\n", "[[Main]\nkey=1\n"}) {
    EXPECT_EQ(ProfileText(file).Get("Main", "key"), std::nullopt) << file;
    EXPECT_EQ(ProfileText(file).Get("", "key"), std::nullopt) << file;
    EXPECT_EQ(ProfileText(file).Get("[Main", "key"), std::nullopt) << file;
  }
}

struct WriteCase {
  const char* what;
  std::string before;
  const char* section;
  std::string key;
  std::string value;
  std::string after;
};

TEST(ProfileText, WritesAValueAndNothingElse) {
  const WriteCase cases[] = {
      {"replace", "[Main]\r\n Key =  old ; x\r\nb=2", "MAIN", "key", "new",
       "[Main]\r\n Key =  new\r\nb=2"},
      {"same value again", "[Main]\nkey= \"v\"\n", "Main", "key", "\"v\"", "[Main]\nkey= \"v\"\n"},
      {"value with blanks in front, again", "[Main]\nkey= v\n", "Main", "key", " v",
       "[Main]\nkey= v\n"},
      {"where it stands first", "[a]\nk=1\n[A]\nk=2\nj=3\n", "a", "j", "4",
       "[a]\nk=1\n[A]\nk=2\nj=4\n"},
      {"new key after the last one", "[a]\nk=1\n;c\n\n\n[b]\n", "a", "n", "v",
       "[a]\nk=1\nn=v\n;c\n\n\n[b]\n"},
      {"new key into the first section of the name", "[a]\n\n[b]\n[a]\nk=1\n", "a", "n", "v",
       "[a]\nn=v\n\n[b]\n[a]\nk=1\n"},
      {"below the comments of an empty section", "[a]\n;c\n//d=1\nrest\n", "a", "n", "v",
       "[a]\n;c\n//d=1\nn=v\nrest\n"},
      {"takes the ending before it", "[a]\rk=1\n[b]\r\n", "a", "n", "v", "[a]\rk=1\nn=v\n[b]\r\n"},
      {"ends the last line first", "x\n[a]\nk=1", "a", "n", "v", "x\n[a]\nk=1\nn=v\n"},
      {"new section", "[a]\nk=1", "KILL TABLES", "n", "v", "[a]\nk=1\n[KILL TABLES]\nn=v\n"},
      {"empty file", "", "Main", "n", "v", "[Main]\r\nn=v\r\n"},
      {"one line without an end", "x", "Main", "n", "v", "x\r\n[Main]\r\nn=v\r\n"},
      {"only a mark", "\xEF\xBB\xBF", "Main", "n", "v", "\xEF\xBB\xBF[Main]\r\nn=v\r\n"},
      {"empty key name", "[a]\n", "a", "", "v", "[a]\n=v\n"},
      {"empty key name again", "[a]\n=v\n", "a", "", "w", "[a]\n=w\n"},
      {"line breaks", "[a]\n", "a", "n\r\nm", "v\nw\rx", "[a]\nn m=v w x\n"},
      {"header for a name", "[a]\n", "a", " [b]", "v", "[a]\n"},
      {"comments for names", "[a]\n", "a", "//b", "v", "[a]\n"},
      {"no section name", "[a]\n", "", "n", "v", "[a]\n"},
      {"UTF-16", "\xFE\xFFxy", "a", "n", "v", "\xFE\xFFxy"},
      {"name with an equals sign", "[a]\n", "a", " k = l", "v", "[a]\nk= l=v\n"},
      {"name with an equals sign again", "[a]\n[A]\nk=1\n", "a", "k=l", "v", "[a]\n[A]\nk=l=v\n"},
      {"blanks around the name", "[a]\nb=1\n", "a", "\t n m ", " v ", "[a]\nb=1\nn m= v \n"},
      {"value with blanks in front, once more", "[a]\nk=  v\n", "a", "k", " v", "[a]\nk=  v\n"},
      {"bracket in the section", "x\n", "a]b", "n", "v", "x\n"},
      {"bracket before the section", "[[a]\n", " [a", "n", "v", "[[a]\n"},
      {"line break in the section", "[a b]\n", "a\nb", "n", "v", "[a b]\nn=v\n"},
  };
  for (const WriteCase& test : cases) {
    ProfileText text(test.before);
    text.Set(test.section, test.key, test.value);
    EXPECT_EQ(text.Bytes(), test.after) << test.what;
    EXPECT_EQ(ProfileText(test.before).Bytes(), test.before) << test.what;
  }
}

TEST(ProfileText, DoesWhatASimpleModelDoes) {
  std::mt19937 random(7);
  const auto any = [&](const std::vector<std::string>& texts) {
    return texts[random() % texts.size()];
  };
  const std::vector<std::string> keys = {"k", "K", "j", "k=j", "J=", ""};
  const std::vector<std::string> values = {"", "1", "22", "a=b", "[x]"};
  for (int history = 0; history < 300; ++history) {
    std::string bytes = "top\n";  // from which new lines take their ending
    for (auto lines = random() % 9; lines > 0; --lines) {
      bytes += any({"", "junk", "; c=1", "[a]", "[A]", "[b]", "k=1", "K=2", "j=k=3", "=4"}) + "\n";
    }
    ProfileText text(bytes);
    NaiveText model(bytes);
    std::string said = bytes;
    for (int step = 0; step < 12; ++step) {
      const char section = random() % 3 != 0 ? 'a' : 'b';
      if (random() % 8 == 0) {
        text.EmptySection({&section, 1});
        model.EmptySection({&section, 1});
        said += "-- empty " + std::string(1, section) + "\n";
      } else {
        const std::string key = any(keys);
        const std::string value = any(values);
        text.Set({&section, 1}, key, value);
        model.Set({&section, 1}, key, value);
        said += "-- set " + std::string(1, section) + " " + key + " to " + value + "\n";
      }
      ASSERT_EQ(text.Bytes(), model.Bytes()) << said;
      for (const char* const key : {"k", "j", ""}) {
        for (const char name : {'a', 'b'}) {
          ASSERT_EQ(text.Get({&name, 1}, key), model.Get({&name, 1}, key))
              << said << name << " " << key;
        }
      }
    }
  }
}

TEST(ProfileText, SeesWhatItWroteBefore) {
  ProfileText text("[a]\n;c\n\n[b]\n");
  for (const char* key : {"one", "two", "three"}) text.Set("A", key, "1");
  text.Set("new", "x", "1");
  text.Set("a", "TWO", "2");
  text.Set("NEW", "y", "2");
  EXPECT_EQ(text.Bytes(), "[a]\n;c\none=1\ntwo=2\nthree=1\n\n[b]\n[new]\nx=1\ny=2\n");
  EXPECT_EQ(text.Get("a", "three"), "1");
  EXPECT_EQ(text.Get("new", "Y"), "2");
}

TEST(ProfileText, EmptiesASection) {
  struct {
    const char* what;
    std::string before;
    std::string after;
  } const cases[] = {
      {"keys and junk go, comments stay",
       "[x]\r\nk=1\r\n  ; c, d\r\njunk\r\n//e\r\n\r\n[y]\r\nk=1\r\n",
       "\r\n\r\n[x]\r\n  ; c, d\r\n//e\r\n\r\n\r\n[y]\r\nk=1\r\n"},
      {"every section of the name", "[X]\na=1\n[y]\nb=1\n[ x ]\nc=1\n",
       "\n\n[X]\n\n\n[y]\nb=1\n\n\n[ x ]\n"},
      {"lines before the first header", "top\r\n \r\n[y]\nb,c=1", "top\r\n\r\n\r\n[y]\nb,c=1"},
      {"blank lines alone", "\n\n \n", ""},
      {"after the mark", "\xEF\xBB\xBF[x]\na=1\n", "\xEF\xBB\xBF\n\n[x]\n"},
      {"a mark stays behind the first line", " \n\n\xEF\xBB\xBF[x]\n \na=1",
       " \n\xEF\xBB\xBF[x]\na=1"},
      {"one of UTF-16, too", "\r\n\xFE\xFF[x]\r\n[x]\r\na=1", "\r\n\xFE\xFF[x]\r\n\r\n\r\n[x]\r\n"},
      {"behind the mark of the file", "\xEF\xBB\xBF\n\xEF\xBB\xBF[x]\na=1\n",
       "\xEF\xBB\xBF\xEF\xBB\xBF[x]\na=1\n"},
      {"header at the end of the text", "[x]", "\r\n\r\n[x]"},
      {"UTF-16 stays", "\xFF\xFE\n\n[", "\xFF\xFE\n\n["},
  };
  for (const auto& test : cases) {
    ProfileText text(test.before);
    text.EmptySection("x");
    EXPECT_EQ(text.Bytes(), test.after) << test.what;
    ProfileText again(test.after);
    again.EmptySection("x");
    EXPECT_EQ(again.Bytes(), test.after) << test.what << ", twice";
  }
}

TEST(ProfileText, SpacesHeaders) {
  ProfileText text("[x]\na=1\n\nb=2\n[y]\n\n");
  text.Set("new", "k", "v");
  text.SpaceHeaders();
  EXPECT_EQ(text.Bytes(), "\n\n[x]\na=1\nb=2\n\n\n[y]\n\n\n[new]\nk=v\n");
  text.Set("x", "c", "3");
  EXPECT_EQ(text.Bytes(), "\n\n[x]\na=1\nb=2\nc=3\n\n\n[y]\n\n\n[new]\nk=v\n");
}

TEST(ProfileText, ListsTheNamesOfASection) {
  using namespace std::string_literals;
  const ProfileText text(
      "[u]\nb = 1\n;c=1\nnone\n[v]\nx=1\n[U]\n A=2\nB=3\n=4\n\xE9=5\nc \0d=6\n"s);
  EXPECT_EQ(text.KeyNames("u"), (std::vector<std::string>{"b", "A", "B", "", "\xC3\xA9", "c"}));
  EXPECT_EQ(text.Get("u", "a"), "2");
  EXPECT_EQ(text.Get("u", "\xC3\xA9"), "5");
}

}  // namespace
}  // namespace config
