#include "frontends/appkit/menu_target.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <variant>

#include "frontends/appkit/represented_object.h"

/// What was chosen, as an object that the run loop can keep.
@interface VordaChoice : NSObject {
 @private
  const std::shared_ptr<const MenuItem>* item_;
}
- (instancetype)initWithItem:(std::shared_ptr<const MenuItem>)item;
- (const std::shared_ptr<const MenuItem>&)item;
@end

@implementation VordaChoice

- (instancetype)initWithItem:(std::shared_ptr<const MenuItem>)item {
  self = [super init];
  if (self != nil) item_ = new std::shared_ptr<const MenuItem>(std::move(item));
  return self;
}

- (void)dealloc {
  delete item_;
  [super dealloc];
}

- (const std::shared_ptr<const MenuItem>&)item {
  return *item_;
}

@end

namespace {

std::optional<std::int32_t> pidOf(const RepresentedObject& value) {
  if (const auto* pid = std::get_if<std::int32_t>(&value)) return *pid;
  if (const auto* process = recordIn<VordaProcess>(value)) return process->pid;
  return std::nullopt;
}

/// The value that the menu item was made from, with what the action needs of it.
std::shared_ptr<const MenuItem> itemOf(Action action, NSMenuItem* sender) {
  MenuItem item{.action = action, .representedObject = valueOf([sender representedObject])};
  if (const auto pid = pidOf(item.representedObject)) {
    item.process = ProcessReference{*pid, std::nullopt};
    if ([sender tag] != 0) item.process->identity = static_cast<std::uint64_t>([sender tag]);
  }
  return std::make_shared<const MenuItem>(std::move(item));
}

}  // namespace

SEL selectorOf(Action action) {
  switch (action) {
    case Action::none:
    case Action::openRow:
    case Action::openMenu:
    case Action::showMore:
      return NULL;
    case Action::refreshNow:
      return @selector(refreshNow);
    case Action::openAM:
      return @selector(openAM);
    case Action::about:
      return @selector(about);
    case Action::quitApp:
      return @selector(quitApp);
    case Action::quitProcess:
      return @selector(quitProcess:);
    case Action::forceProcess:
      return @selector(forceProcess:);
    case Action::showDetails:
      return @selector(showDetails:);
    case Action::quitFamily:
      return @selector(quitFamily:);
    case Action::forceFamily:
      return @selector(forceFamily:);
    case Action::openDockerHelp:
      return @selector(openDockerHelp);
    case Action::unloadByLabel:
      return @selector(unloadByLabel:);
    case Action::unloadLaunchAgent:
      return @selector(unloadAgent:);
    case Action::loadLaunchAgent:
      return @selector(loadAgent:);
  }
  return NULL;
}

@implementation VordaMenuTarget

- (void)reportTo:(MenuDelegate*)delegate ofMenu:(NSMenu*)rootMenu {
  delegate_ = delegate;
  rootMenu_ = rootMenu;
  if (delegate == nullptr) [NSObject cancelPreviousPerformRequestsWithTarget:self];
}

- (BOOL)reportsClose {
  return reportsClose_;
}

- (BOOL)listensTo:(NSMenu*)menu {
  return delegate_ != nullptr && menu == rootMenu_;
}

- (void)menuNeedsUpdate:(NSMenu*)menu {
  if ([self listensTo:menu]) delegate_->menuNeedsUpdate();
}

- (void)menuWillOpen:(NSMenu*)menu {
  if ([self listensTo:menu]) delegate_->menuWillOpen();
}

- (void)menuDidClose:(NSMenu*)menu {
  if (![self listensTo:menu]) return;
  reportsClose_ = YES;
  delegate_->menuDidClose();
  reportsClose_ = NO;
}

- (void)perform:(Action)action sender:(NSMenuItem*)sender {
  VordaChoice* choice = [[[VordaChoice alloc] initWithItem:itemOf(action, sender)] autorelease];
  // Not in the common modes: those include the tracking of menus and alerts.
  [self performSelector:@selector(performChoice:)
             withObject:choice
             afterDelay:0
                inModes:[NSArray arrayWithObject:NSDefaultRunLoopMode]];
}

- (void)performChoice:(VordaChoice*)choice {
  if (delegate_ != nullptr) delegate_->perform([choice item]);
}

- (void)refreshNow {
  [self perform:Action::refreshNow sender:nil];
}

- (void)openAM {
  [self perform:Action::openAM sender:nil];
}

- (void)about {
  [self perform:Action::about sender:nil];
}

- (void)quitApp {
  [self perform:Action::quitApp sender:nil];
}

- (void)openDockerHelp {
  [self perform:Action::openDockerHelp sender:nil];
}

- (void)quitProcess:(NSMenuItem*)sender {
  [self perform:Action::quitProcess sender:sender];
}

- (void)forceProcess:(NSMenuItem*)sender {
  [self perform:Action::forceProcess sender:sender];
}

- (void)quitFamily:(NSMenuItem*)sender {
  [self perform:Action::quitFamily sender:sender];
}

- (void)forceFamily:(NSMenuItem*)sender {
  [self perform:Action::forceFamily sender:sender];
}

- (void)showDetails:(NSMenuItem*)sender {
  [self perform:Action::showDetails sender:sender];
}

- (void)unloadByLabel:(NSMenuItem*)sender {
  [self perform:Action::unloadByLabel sender:sender];
}

- (void)unloadAgent:(NSMenuItem*)sender {
  [self perform:Action::unloadLaunchAgent sender:sender];
}

- (void)loadAgent:(NSMenuItem*)sender {
  [self perform:Action::loadLaunchAgent sender:sender];
}

@end
