// GNUstep's Foundation, and what the edition uses of Apple's beyond it.
#pragma once

#include_next <Foundation/Foundation.h>

