# Flags of our own code, carried by an interface target so that no dependency is compiled with them.
add_library(morvenkite_flags INTERFACE)
target_compile_options(morvenkite_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    # Results must not depend on whether the compiler fuses a multiplication with an addition.
    -ffp-contract=off
    # sqrt sets errno otherwise, which keeps loops over spectra from being vectorised;
    # nothing reads errno. Values stay the same.
    -fno-math-errno -fno-trapping-math
    # Without fixed places an edit anywhere moves the loops over spectra across cache lines, and
    # the same code becomes up to 15 % slower or faster.
    -falign-functions=64 -falign-loops=32)
if(MORVENKITE_WERROR)
    target_compile_options(morvenkite_flags INTERFACE -Werror)
endif()
target_compile_definitions(morvenkite_flags INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH
    QT_DEPRECATED_WARNINGS)

if(MORVENKITE_SANITIZE)
    target_compile_options(morvenkite_flags INTERFACE
        -fsanitize=${MORVENKITE_SANITIZE} -fno-omit-frame-pointer)
    target_link_options(morvenkite_flags INTERFACE -fsanitize=${MORVENKITE_SANITIZE})
    if(MORVENKITE_SANITIZE MATCHES "undefined")
        # A wrong cast or division must end the test, not only print.
        target_compile_options(morvenkite_flags INTERFACE
            -fno-sanitize-recover=all -fsanitize=float-divide-by-zero,float-cast-overflow
            # Dividing by zero is part of several rules (a spectrum without an edge step, a map of
            # one value) and yields inf or nan on purpose; casting those to an integer is not.
            -fno-sanitize=float-divide-by-zero)
    endif()
endif()
