# Takes the glyphs that the symbol table names out of the icon fonts, so that an installed program needs neither font.
