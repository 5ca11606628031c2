# Flags that all code shares, and the stricter ones for our own.

# The sound is defined by each operation rounded on its own: no fused multiply-add behind our back,
# on any processor, in any build.
add_compile_options (-ffp-contract=off -ffunction-sections -fdata-sections)
add_link_options (-Wl,--gc-sections)

if (QUILVANE_SANITIZE)
    add_compile_options (-fsanitize=${QUILVANE_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options (-fsanitize=${QUILVANE_SANITIZE})
endif()

# Our own code compiles without a warning; JUCE's headers count as the system's.
add_library (quilvane_warnings INTERFACE)
target_compile_options (quilvane_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Werror
    -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    -Wcast-align -Wdouble-promotion -Wold-style-cast -Wundef -Wunused)
