#pragma once

#define ARG_MAX (1024 * 1024)
