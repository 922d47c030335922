#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "ui/memory_pressure_view.h"

/// Shows the strip in its menu item. It shares the strip with the MenuItem that the item was made
/// from.
@interface VordaStripView : NSView {
 @private
  const std::shared_ptr<MemoryPressureView>* strip_;
}
- (instancetype)initWithStrip:(const std::shared_ptr<MemoryPressureView>&)strip;

/// The strip in words, for the item's accessibility label: VoiceOver reads the item, not its view.
- (NSString*)spokenText;
@end
