# The words that belong to the maker of this build, not to the program.

set(VORDA_MAKER_FULL_NAME "Halvek Software" CACHE STRING "The maker's full name, as About shows it")
set(VORDA_COPYRIGHT "Copyright © 2026 Halvek Software. All rights reserved." CACHE STRING
    "The copyright line, as About and Settings show it")
