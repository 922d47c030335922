#include "app/front_end_choice.h"

FrontEndKind chooseFrontEnd(const Surroundings& surroundings) {
  if (surroundings.intoPipe) return FrontEndKind::text;
  if (surroundings.onTerminal && (surroundings.overSsh || !surroundings.hasDisplay)) {
    return FrontEndKind::terminal;
  }
  return surroundings.hasDisplay ? FrontEndKind::tray : FrontEndKind::text;
}
