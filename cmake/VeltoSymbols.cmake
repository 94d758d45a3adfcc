# Extracts the glyphs that the symbol table names from the icon fonts, so that an installed program needs neither font.

# velto_find_icon_font(VAR NAME): the newest FONT and CHARMAP of that name that the QtAwesome package of this system brings,
# joined by a comma. Debian keeps them in a folder of their own, Fedora and Arch inside the Python package; newer releases
# have the version in the file names.
function(velto_find_icon_font variable name)
    file(GLOB folders
        ${VELTO_ICON_FONTS}
        /usr/share/python-qtawesome/fonts
        /usr/lib/python3/dist-packages/qtawesome/fonts
        /usr/lib/python3.*/site-packages/qtawesome/fonts
        /usr/lib64/python3.*/site-packages/qtawesome/fonts
        /usr/local/lib/python3.*/*-packages/qtawesome/fonts)
    foreach(folder ${folders})
        file(GLOB fonts ${folder}/${name}*.ttf)
        file(GLOB charmaps ${folder}/${name}-charmap*.json)
        if(fonts AND charmaps)
            list(POP_BACK fonts font)
            list(POP_BACK charmaps charmap)
            set(${variable} ${font},${charmap} PARENT_SCOPE)
            set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${font} ${charmap})
            return()
        endif()
    endforeach()
    message(FATAL_ERROR
        "The icon font \"${name}\" is missing. It comes with QtAwesome: python-qtawesome-common (Debian, Ubuntu), "
        "python3-qtawesome (Fedora) or python-qtawesome (Arch). If it is elsewhere, name its folder with -DVELTO_ICON_FONTS=...")
endfunction()

# velto_find_fonttools(VAR): a Python that has fontTools. The first Python on the path may not be the system's.
function(velto_find_fonttools variable)
    foreach(candidate ${Python3_EXECUTABLE} /usr/bin/python3 python3)
        execute_process(COMMAND ${candidate} -c "import fontTools.fontBuilder" RESULT_VARIABLE failed OUTPUT_QUIET ERROR_QUIET)
        if(NOT failed)
            set(${variable} ${candidate} PARENT_SCOPE)
            return()
        endif()
    endforeach()
    message(FATAL_ERROR "No Python with fontTools. Install python3-fonttools (Debian, Ubuntu), fonttools (Fedora) or "
        "python-fonttools (Arch), or name a Python that has it with -DPython3_EXECUTABLE=...")
endfunction()

set(VELTO_ICON_FONTS "" CACHE PATH "A folder with the icon fonts and their charmaps, if they aren't where a distribution puts them")

# velto_symbols(TARGET TABLE): puts the font of the table's symbols into the target's resources (:/velto/symbols.ttf), and
# SymbolTable.inc, which maps names to code points, onto its include path.
function(velto_symbols target table)
    velto_find_fonttools(python)
    velto_find_icon_font(phosphor phosphor)
    velto_find_icon_font(mdi materialdesignicons6-webfont)
    set(out ${CMAKE_CURRENT_BINARY_DIR}/symbols)
    file(MAKE_DIRECTORY ${out})
    set(script ${PROJECT_SOURCE_DIR}/cmake/subset-symbols.py)
    add_custom_command(
        OUTPUT ${out}/symbols.ttf ${out}/SymbolTable.inc
        COMMAND ${python} ${script} ${table} --source phosphor=${phosphor} --source mdi=${mdi}
            --font ${out}/symbols.ttf --code ${out}/SymbolTable.inc
        DEPENDS ${script} ${table}
        COMMENT "Building the symbol font"
        VERBATIM)
    target_sources(${target} PRIVATE ${out}/SymbolTable.inc)
    target_include_directories(${target} PRIVATE ${out})
    qt_add_resources(${target} velto_symbols PREFIX /velto BASE ${out} FILES ${out}/symbols.ttf)
endfunction()
