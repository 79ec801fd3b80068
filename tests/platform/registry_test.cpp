#include "platform/registry.h"

#include <array>
#include <filesystem>
#include <gmock/gmock.h>
#include <string>

#include "tests/support/files.h"

namespace platform {
namespace {

using namespace std::string_literals;

class RegistryTest : public testing::Test {
 protected:
  /// Type and bytes of a value below HKEY_LOCAL_MACHINE, "-" when it is not there.
  std::string Query(const std::string& text, const std::string& path, const std::string& name) {
    support::WriteFile(file_, text);
    const Registry registry(file_);
    Registry::Key key = nullptr;
    if (registry.RegOpenKeyEx(kHkeyLocalMachine, path, key) != kErrorSuccess) return "no key";
    std::array<char, 1024> buffer = {};
    std::uint32_t type = 0;
    std::size_t size = 0;
    const long result = Registry::RegQueryValueEx(key, name, type, buffer, size);
    EXPECT_EQ(Registry::RegCloseKey(key), kErrorSuccess);
    if (result != kErrorSuccess) return "error " + std::to_string(result);
    return std::to_string(type) + " " + std::string(buffer.data(), size);
  }

  const support::TempFolder folder_;
  const std::filesystem::path file_ = folder_.Path() / "registry.reg";
};

TEST_F(RegistryTest, ReadsTheExportFormat) {
  const std::string text =
      "Windows Registry Editor Version 5.00\r\n"
      "\r\n"
      "; \"a comment\"=\"\\\r\n"
      "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Tools]\r\n"
      "\"Path\"=\"C:\\\\Program \\\"Files\\\"\\\\a.exe\"\r\n"
      "@=\"nameless\"\r\n"
      "\"Number\" = dword:0000012C\r\n"
      "\"Binary\"=hex:00,01,\\\r\n"
      "  fe,ff\r\n"
      "\"Wide\"=hex(1):41,00,e9,00,00,00\r\n"
      "\"Expand\"=hex(2):41,00\r\n"
      "\"Gone\"=\"x\"\r\n"
      "\"Gone\"=-\r\n"
      "\"Broken\"=\"no end\\\r\n"
      "\"BadHex\"=hex:0g\r\n"
      "\"BadNumber\"=dword:123456789\r\n"
      "nonsense\r\n"
      "\"After\"=\"still read\"\r\n"
      "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Removed]\r\n"
      "\"A\"=\"x\"\r\n"
      "[-HKEY_LOCAL_MACHINE\\SOFTWARE\\Removed]\r\n"
      "\"B\"=\"of no key\"\r\n"
      "[HKEY_CURRENT_USER\\SOFTWARE\\Mine]\r\n"
      "[HKEY_LOCAL_MACHINE\\software\\tools]\r\n"
      "\"Second\"=\"same key\"";
  const struct {
    const char* name;
    std::string expected;
  } cases[] = {{"PATH", "1 C:\\Program \"Files\"\\a.exe\0"s},
               {"", "1 nameless\0"s},
               {"number", "4 \x2C\x01\0\0"s},
               {"Binary", "3 \0\x01\xFE\xFF"s},
               {"Wide", "1 A\xC3\xA9\0"s},
               {"Expand", "2 A\0"s},
               {"Gone", "error 2"},
               {"Broken", "error 2"},
               {"BadHex", "error 2"},
               {"BadNumber", "error 2"},
               {"After", "1 still read\0"s},
               {"Second", "1 same key\0"s}};
  for (const auto& [name, expected] : cases) {
    EXPECT_EQ(Query(text, "Software\\TOOLS", name), expected) << name;
  }
  EXPECT_EQ(Query(text, "SOFTWARE\\Removed", "A"), "no key");
  EXPECT_EQ(Query(text, "SOFTWARE\\Mine", ""), "no key");
}

TEST_F(RegistryTest, ReadsUtf16AndByteOrderMarks) {
  const std::string line = "[HKEY_LOCAL_MACHINE\\K]\n\"A\"=\"";
  std::string wide = "\xFF\xFE";
  for (const char letter : line) wide += {letter, '\0'};
  wide +=
      "\xE9\x00\x3D\xD8\x00\xDE\x00\xD8\"\0\r\0\n\0!"s;  // e acute, a pair, half a pair, odd byte
  EXPECT_EQ(Query(wide, "K", "A"), "1 \xC3\xA9\xF0\x9F\x98\x80\xEF\xBF\xBD\0"s);
  EXPECT_EQ(Query("\xEF\xBB\xBF" + line + "x\"", "K", "A"), "1 x\0"s);
}

TEST_F(RegistryTest, AValueMustFitTheBuffer) {
  const auto text = [](std::size_t length) {
    return "[HKEY_LOCAL_MACHINE\\K]\n\"A\"=\"" + std::string(length, 'x') + "\"\n";
  };
  EXPECT_EQ(Query(text(1023), "K", "A"), "1 " + std::string(1023, 'x') + '\0');
  EXPECT_EQ(Query(text(1024), "K", "A"), "error 234");
}

TEST_F(RegistryTest, WithoutAFileThereIsNoKey) {
  Registry::Key key = nullptr;
  EXPECT_EQ(Registry(file_).RegOpenKeyEx(kHkeyLocalMachine, "K", key), kErrorFileNotFound);
  EXPECT_EQ(Registry::RegCloseKey(key), kErrorInvalidHandle);
}

}  // namespace
}  // namespace platform
