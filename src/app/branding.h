#pragma once

#include <string>

#include "ui/alerts.h"

/// The texts that say whose program this is. The maker's full name and copyright line are
/// product configuration (cmake/Product.cmake).
namespace Branding {

///@{
inline constexpr const char* kProductName = "Vorda";
inline constexpr const char* kMakerShortName = "Halvek";
inline constexpr const char* kSlogan = "See everything. Control everything.";
inline constexpr const char* kDevelopedBy = "Developed by Halvek";
///@}

/// The program's version, as it was built.
std::string version();

/// The maker's full name followed by its short name in parentheses.
std::string makerLine();

/// The copyright line, as it was configured.
std::string copyrightLine();

/// The informative text of the about alert.
std::string aboutBody();

/// What "About" shows: the badge, the product's name and aboutBody().
Alert aboutAlert();

}  // namespace Branding
