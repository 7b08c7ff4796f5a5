# quorvane_web_address(<variable> <default> <help text>)
#
# Declares a cache variable holding a web address that the program is built
# with. The address becomes a C++ string literal, so it must be an http or
# https address without quotes, backslashes or white space.
function(quorvane_web_address variable default help)
    set(${variable} "${default}" CACHE STRING "${help}")
    set(address "${${variable}}")
    if(NOT address MATCHES "^https?://[^\"\\\\ \t\r\n]+$")
        message(FATAL_ERROR
            "${variable} must be an http:// or https:// address without quotes, "
            "backslashes or spaces; it is \"${address}\".")
    endif()
endfunction()
