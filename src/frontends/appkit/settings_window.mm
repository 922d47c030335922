#include "frontends/appkit/settings_window.h"

#include "platform/macos/foundation_text.h"

namespace {

constexpr CGFloat kSpacing = 8;  // between two lines, beside their own padding

NSFont* nsFont(SettingsView::Font font) {
  NSFontTextStyle style = NSFontTextStyleBody;
  switch (font) {
    case SettingsView::Font::body:
      break;
    case SettingsView::Font::title2Bold:
      style = NSFontTextStyleTitle2;
      break;
    case SettingsView::Font::caption:
      style = NSFontTextStyleCaption1;
      break;
    case SettingsView::Font::caption2:
      style = NSFontTextStyleCaption2;
      break;
  }
  NSFont* result = [NSFont preferredFontForTextStyle:style options:[NSDictionary dictionary]];
  if (font != SettingsView::Font::title2Bold) return result;
  return [[NSFontManager sharedFontManager] convertFont:result toHaveTrait:NSBoldFontMask];
}

NSColor* nsForeground(SettingsView::Foreground foreground) {
  switch (foreground) {
    case SettingsView::Foreground::primary:
      break;
    case SettingsView::Foreground::secondary:
      return [NSColor secondaryLabelColor];
    case SettingsView::Foreground::tertiary:
      return [NSColor tertiaryLabelColor];
  }
  return [NSColor labelColor];
}

NSTextField* label(const SettingsView::Line& line) {
  NSTextField* field = [NSTextField wrappingLabelWithString:platform::nsString(line.text)];
  [field setFont:nsFont(line.font)];
  [field setTextColor:nsForeground(line.foreground)];
  [field setPreferredMaxLayoutWidth:SettingsView::kWidth - 2 * SettingsView::kPadding];
  return field;
}

NSStackView* form(const std::vector<SettingsView::Line>& lines) {
  constexpr CGFloat kEdge = SettingsView::kPadding;
  NSStackView* stack = [NSStackView stackViewWithViews:[NSArray array]];
  [stack setOrientation:NSUserInterfaceLayoutOrientationVertical];
  [stack setAlignment:NSLayoutAttributeLeading];
  [stack setSpacing:kSpacing];
  [stack setEdgeInsets:NSEdgeInsetsMake(kEdge, kEdge, kEdge, kEdge)];
  NSView* above = nil;
  for (const SettingsView::Line& line : lines) {
    NSTextField* field = label(line);
    if (above != nil) [stack setCustomSpacing:kSpacing + line.topPadding afterView:above];
    [stack addView:field inGravity:NSStackViewGravityTop];
    above = field;
  }
  return stack;
}

}  // namespace

NSWindow* settingsWindow(const std::vector<SettingsView::Line>& lines) {
  constexpr NSRect kContent = {{0, 0}, {SettingsView::kWidth, SettingsView::kHeight}};
  NSWindow* window =
      [[[NSWindow alloc] initWithContentRect:kContent
                                   styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskClosable
                                     backing:NSBackingStoreBuffered
                                       defer:YES] autorelease];
  [window setReleasedWhenClosed:NO];
  // On the desktop that the user looks at, not where it was seen last.
  [window setCollectionBehavior:NSWindowCollectionBehaviorMoveToActiveSpace];
  [window setTitle:platform::nsString(SettingsView::kTitle)];
  NSStackView* content = form(lines);
  // The window's size is fixed, and does not depend on the texts.
  [content setTranslatesAutoresizingMaskIntoConstraints:YES];
  [content setFrame:kContent];
  [window setContentView:content];
  [window center];
  return window;
}
