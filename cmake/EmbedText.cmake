# Writes INPUT as a C++ string constant into OUTPUT.
file(READ ${INPUT} content)
set(delim "MWTEXT")
file(WRITE ${OUTPUT} "#include \"document/NodeKindsHelp.h\"\n\nnamespace mw {\n\nconst char* NodeKindsHelpText()\n{\n    return R\"${delim}(${content})${delim}\";\n}\n\n} // namespace mw\n")
