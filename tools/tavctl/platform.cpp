// SPDX-License-Identifier: Apache-2.0
#include "platform.h"

#include <string_view>

const bool kIsOnPc = std::string_view(TAV_PLATFORM) == "host";
