// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/FreeMemory.h"

#include <malloc.h>

namespace cadorel {

void giveBackFreeMemory()
{
#ifdef __GLIBC__
    ::malloc_trim(0);
#endif
}

} // namespace cadorel
