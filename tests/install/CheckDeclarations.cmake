# A terminal links what an installed header declares: every function at namespace level is exported, or stands in the
# header whole. Our headers are formatted, so such a declaration begins a line and ends with ");".
foreach(header IN LISTS HEADERS)
    file(STRINGS "${header}" lines REGEX "^[A-Za-z].*\\(.*\\);")
    foreach(line IN LISTS lines)
        if(NOT line MATCHES "EXPORT|^static_assert|^Q_DECLARE_|^inline |^constexpr |^using ")
            message(SEND_ERROR "${header} declares what the library does not export:\n  ${line}")
        endif()
    endforeach()
endforeach()
