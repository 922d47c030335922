#pragma once

#import <Foundation/Foundation.h>

#include "ui/menu.h"

/// What a menu item's representedObject is: a pid as a number, a label as a string, a record
/// as an opaque object, nil for nothing; autoreleased.
id objectOf(const RepresentedObject& value);

/// The value of such an object; nothing for any other object.
RepresentedObject valueOf(id object);
