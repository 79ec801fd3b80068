#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace config {

/// The text of a settings file, edited in place: lines that a call does not change keep every
/// byte. Sections and keys are found without regard to the case of A to Z.
///
/// A line is a header when it begins, after blanks, with "["; its name goes to the first "]" or to
/// the line's end. A line that begins with ";" or "//" is a comment. Any other line with a "=" in
/// it is a key. Several sections of one name count as one: a key is read where it stands first.
/// Sections without a name, and those whose name begins with "[", are never read.
///
/// A file in UTF-16 (told by its byte-order mark) is left alone: reads are empty, writes do
/// nothing. Cost: linear in the text to build, constant for a read or a write of a key. What a
/// write replaces is kept in memory until the text and its copies go, which one thread may use.
class ProfileText {
 public:
  explicit ProfileText(std::string_view bytes = {});

  /// A text as it can stand within a line: up to a NUL, every line break a blank.
  static std::string OneLine(std::string_view text);

  /// Whether a key may have this name: not one that would read as a header or a comment.
  static bool IsKeyName(std::string_view name);

  /// Whether the text can be read and written at all (see UTF-16 above).
  bool IsUsable() const { return usable_; }

  /// The value of a key as UTF-8, without surrounding blanks and without one pair of quotes around
  /// the whole; nothing when the key is missing. A NUL ends the value.
  std::optional<std::string> Get(std::string_view section, std::string_view key) const;

  /// The names of a section's keys in the order of the file, repeated ones repeated, as UTF-8.
  std::vector<std::string> KeyNames(std::string_view section) const;

  /// Writes a key: replaces its value where the key stands first, else adds it after the last key
  /// of its section, creating the section at the end of the text when there is none. Line breaks
  /// in the name or the value become blanks, blanks around the name are left out, and of a name
  /// that holds a "=" the part behind it goes to the value: what is written is what reads back.
  /// Nothing is written for a section without a name or with a name that no header reads back as
  /// ("[" at its start, "]" anywhere), and for a name that is none of a key (see IsKeyName).
  void Set(std::string_view section, std::string_view key, std::string_view value);

  /// Takes every line but headers and comments out of a section, and spaces the headers.
  void EmptySection(std::string_view section);

  /// Takes every blank line out of the text and puts two empty lines in front of every header. The
  /// first line stays where a byte-order mark would take its place.
  void SpaceHeaders();

  /// The whole text as it goes to disk.
  std::string Bytes() const;

 private:
  /// Both parts lie in `texts_`.
  struct Line {
    std::string_view text;
    std::string_view ending;  // LF, CR LF, CR, or nothing at the end of the text
  };
  /// A header and the lines up to the next one; the first block has no header.
  struct Block {
    std::string name;  // folded; empty for the first block
    std::vector<Line> lines;
  };
  struct Place {
    std::size_t block;
    std::size_t line;
  };
  /// The blocks of one name, at least one. Their keys are looked through when the first of them is
  /// asked for: a save empties sections that nobody has read.
  struct Section {
    std::vector<std::size_t> blocks;
    bool isIndexed = false;                            // whether what follows holds
    std::unordered_map<std::string_view, Place> keys;  // by folded name, the first of each
    std::size_t keysEnd = 0;  // just after the last key line of the first block, 0 without keys
  };

  void SplitLines(std::string_view bytes);
  void AddBlock(std::string name);
  std::string_view Keep(std::string text) const;
  std::string_view FoldedKeyName(std::string_view line) const;
  Section* FindSection(const std::string& name) const;
  void IndexKeys(Section& section) const;
  bool KeepsFirstLine() const;
  void InsertBlankLines();
  void AddKey(Section& section, std::string_view line);
  Section& AddSection(std::string_view section);
  std::string_view EndingAfter(std::size_t block, std::size_t line) const;
  void TerminateLastLine();

  bool usable_ = true;
  std::string mark_;  // the byte-order mark, where there is one
  /// The bytes that lines and keys consist of. Nothing in it moves, changes or goes, so that copies
  /// of a text share it.
  std::shared_ptr<std::deque<std::string>> texts_ = std::make_shared<std::deque<std::string>>();
  std::vector<Block> blocks_;
  mutable std::unordered_map<std::string, Section> sections_;
};

}  // namespace config
