#pragma once

namespace config {

// Names of files and folders that the editor and the engine both use.

// The engine's message logs, beside the programs.
inline constexpr const char* kMainLog = "morvane.log.txt";
inline constexpr const char* kLogParserLog = "logparser.log.txt";
inline constexpr const char* kTemplateParserLog = "templateparser.log.txt";
inline constexpr const char* kCustomRankLog = "custrank.log.txt";

/// The folder of pictures in the output directory.
inline constexpr const char* kImageFolder = "images";

/// The extension of templates, without its ".".
inline constexpr const char* kTemplateExtension = "htmlt";

}  // namespace config
