# Flags of our own targets. Nothing here reaches a project that links the library.

# orvex_own(<target>): a target of this project, as opposed to one that only uses it.
function(orvex_own target)
    target_compile_features(${target} PUBLIC cxx_std_17)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    target_compile_options(${target} PRIVATE
        -ffp-contract=off -Wall -Wextra -Wpedantic -Wshadow -Wundef -Wcast-align -Wformat=2 -Wnon-virtual-dtor)
    if(ORVEX_STRICT)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(ORVEX_SANITIZE)
        # A conversion of a float outside int's range is not part of `undefined`.
        set(flags -fsanitize=${ORVEX_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        if(ORVEX_SANITIZE MATCHES "undefined")
            list(APPEND flags -fsanitize=float-cast-overflow)
        endif()
        target_compile_options(${target} PRIVATE ${flags})
        target_link_options(${target} PUBLIC ${flags})
    endif()
    if(ORVEX_COVERAGE)
        target_compile_options(${target} PRIVATE --coverage)
        target_link_options(${target} PUBLIC --coverage)
    endif()
endfunction()
