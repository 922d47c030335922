#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "launch_agents/vorda_launch_agent.h"
#include "scanner/vorda_process.h"
#include "text/text_span.h"
#include "ui/color.h"
#include "ui/memory_pressure_view.h"

/// What choosing an item asks the controller to do.
enum class Action : std::uint8_t {
  none,
  refreshNow,
  openAM,  ///< open the system's own process monitor
  about,
  quitApp,
  quitProcess,   ///< represents the pid
  forceProcess,  ///< represents the VordaProcess; a pid is accepted
  showDetails,   ///< represents the VordaProcess
  quitFamily,    ///< represents the pid of its head
  forceFamily,   ///< represents the pid of its head
  openDockerHelp,
  unloadByLabel,      ///< represents the launch agent's label
  unloadLaunchAgent,  ///< represents the VordaLaunchAgent
  loadLaunchAgent,    ///< represents the VordaLaunchAgent
  openRow,   ///< the front end's own: open the row's submenu, or what it `opens`, as a menu of its
             ///< own
  showMore,  ///< the front end's own: show all rows of the section; its submenu has the next ones
  openMenu,  ///< the front end's own: open the whole menu in a window of its own
};

/// A record that several items hold and none changes: one copy for all of them, because each of
/// hundreds of items would take as much room as the largest that it may hold. Equal where the
/// records are.
template <typename Record>
class SharedRecord {
 public:
  SharedRecord(Record record) : record_(std::make_shared<const Record>(std::move(record))) {}
  const Record& operator*() const { return *record_; }
  bool operator==(const SharedRecord& other) const {
    return record_ == other.record_ || *record_ == *other.record_;
  }

 private:
  std::shared_ptr<const Record> record_;
};

/// What an item's action acts on, copied when the menu was built.
using RepresentedObject = std::variant<std::monostate, std::int32_t, std::string,
                                       SharedRecord<VordaProcess>, SharedRecord<VordaLaunchAgent>>;

/// The record of that kind in it; nullptr when it holds something else.
template <typename Record>
const Record* recordIn(const RepresentedObject& object) {
  const auto* shared = std::get_if<SharedRecord<Record>>(&object);
  return shared == nullptr ? nullptr : &**shared;
}

/// The process that an item is about. The identity tells it from a later process with the same
/// pid.
struct ProcessReference {
  std::int32_t pid = 0;                   ///< its process id
  std::optional<std::uint64_t> identity;  ///< VordaProcess::identity

  bool operator==(const ProcessReference&) const = default;
};

/// A title that becomes another while its menu is open: a grey line's, when it is known how much
/// memory some processes really hold together; that of a row which was cut off, when it is known
/// what its process holds of cards' memory. All copies of the item share it.
struct LiveTitle {
  std::string title = {};  ///< as it is shown now
  /// Of a line: those whose memory is asked for when its menu opens.
  std::vector<ProcessReference> processes = {};
  std::string beginning = {};  ///< of a line: what stands before the figure
  std::string ending = {};     ///< of a line: behind the figure, once that is known
  bool isKnown = false;        ///< of a line: nothing more will come
};

/// One line of the menu, and what it opens or does.
struct MenuItem {
  /// What stands in the line: text, a thin rule, or the strip.
  enum class Kind : std::uint8_t { item, separator, strip };

  std::string title;             ///< as it was made; shownTitle() is what the user reads
  TextSpan name;                 ///< the part of the title that somebody else chose; empty for none
  std::string toolTip;           ///< lines joined by "\n"; "" for none
  std::size_t ownerEnd = 0;      ///< where the owner's line in it ends; 0 where it has none
  std::optional<Color> dot;      ///< the colour of the dot before the title
  Kind kind = Kind::item;        ///< what stands in the line
  bool enabled = true;           ///< false: a grey label
  bool isOfFamily = false;       ///< a row: of one member of a family, or of all of it
  bool isLeftBehind = false;     ///< a row: VordaProcess::leftBehindBy
  Action action = Action::none;  ///< what choosing it does
  RepresentedObject representedObject;        ///< what the action acts on
  std::optional<ProcessReference> process;    ///< the process of this row or submenu item
  std::shared_ptr<MemoryPressureView> strip;  ///< set on the strip's item alone
  std::vector<MenuItem> submenu;              ///< what it opens; empty for nothing
  /// Of Action::openRow: what it opens, where many items share that; else nullptr.
  std::shared_ptr<const std::vector<MenuItem>> opens;
  std::shared_ptr<LiveTitle> live;  ///< of an item whose title may become another, else nullptr

  bool operator==(const MenuItem&) const = default;
};

/// The menu from top to bottom.
struct Menu {
  std::vector<MenuItem> items;  ///< the first is the strip's
};

/// What the user reads; front ends escape it for their toolkit.
inline const std::string& shownTitle(const MenuItem& item) {
  return item.live ? item.live->title : item.title;
}

/// False for separators, grey lines and the strip.
bool isSelectable(const MenuItem& item);

/// Whether choosing it acts on the program or the machine, not on what a row speaks of: the last
/// items of the menu.
bool isCommand(const MenuItem& item);

/// Whether it is the grey line above a section's rows.
bool isHeading(const MenuItem& item);

/// The process that a row is about, as it was sampled; nullptr for every other item.
const VordaProcess* processOf(const MenuItem& row);

/// The menu's strip; nullptr for a menu without one.
std::shared_ptr<const MemoryPressureView> stripOf(const Menu& menu);
