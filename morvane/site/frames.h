#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "morvane/site/page_list.h"
#include "morvane/site/site_facts.h"
#include "morvane/site/site_templates.h"
#include "morvane/site/template.h"

namespace morvane {

/// What all pages of a template share: the template, the settings, and of the values that all
/// pages share (SharedData) those for which any of its pages has ever asked. A page asks for the
/// same again as long as what it is made from is the same, so it is known which of them matter.
/// The list of the pages keeps the frame of each template from run to run.
class Frames {
 public:
  /// `earlier`: what the last run remarked. `games`: stands for all games. All must outlive this.
  Frames(const SiteFacts& facts, const SharedData& shared, const SiteTemplates& templates,
         const Digest128& games, const PageList::Remarks& earlier);

  /// What every page may depend on besides its template and the games.
  const Digest128& Base() const { return base_; }

  /// Whether pages that earlier runs made with a template can be what they would be now. `key`:
  /// see SiteTemplates::ForEach.
  bool IsSame(const std::string& key) const;

  /// Takes note of what the pages of this run have asked for.
  void Take(const SiteTemplates& rendered);
  /// What the list of the pages is to keep.
  PageList::Remarks Remarks() const;

 private:
  struct Frame {
    Digest128 own;                   // of what does not hang on what was asked for
    std::vector<std::string> asked;  // by name, in order
    bool isSame = false;
  };

  Digest128 Value(const Frame& frame) const;
  void ReadEarlier(std::string_view remark, Frame& frame) const;

  const SharedData& shared_;
  const Digest128& games_;
  Digest128 base_;
  std::map<std::string, Frame> frames_;  // by key
};

}  // namespace morvane
