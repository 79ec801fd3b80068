#pragma once

#include <cstdint>
#include <string>

#include "platform/registry.h"
#include "ui/desktop.h"

class QWidget;

namespace help {

/// Reads one value of the registry into `result`: a text as it is; a 32-bit number in decimal, made
/// from the hexadecimal codes, joined without leading zeros, of those of its bytes that stand
/// before the first zero byte, last byte first. A value of another type is found, and leaves
/// `result` as it is. A key or value that is missing, or a value of more than 1024 bytes, makes the
/// result empty and the answer false.
bool GetKeyValue(const platform::Registry& registry, std::uint32_t root, const std::string& path,
                 const std::string& name, std::string& result);

/// Starts the machine's system-information tool: the one that the registry names or, where it has
/// no entry for one, the first installed of the usual tools. Tells the user when there is none or
/// it cannot be started.
void StartSysInfo(ui::Desktop& desktop, QWidget* owner, const platform::Registry& registry);

}  // namespace help
