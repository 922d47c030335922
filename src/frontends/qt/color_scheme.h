#pragma once

/// What the user asks of programs that can be dark or light.
enum class ColorScheme { noPreference, dark, light };
