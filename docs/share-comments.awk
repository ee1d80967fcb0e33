# In our headers a comment stands for the members below it up to the next blank line, as for a
# setter and its getter; doxygen gives it to the first one only. This gives it to the others too,
# without adding a line, so that what doxygen says about lines stays true.
/^ *\/\/\/( |$)/ {
    if (!inComment) { comment = ""; isShared = 1 }
    inComment = 1
    text = $0
    sub(/^ *\/\/\/ ?/, "", text)
    if (text == "") isShared = 0 # paragraphs and samples are about one member
    comment = comment " " text
    print
    next
}
/^$/ || /^ *(public|protected|private):/ || /^ *}/ { comment = "" }
/^    [^ ].*\(/ && !inComment && ended && comment != "" && isShared && !/\/\// {
    sub(/^    /, "    /**" comment " */ ")
}
{
    inComment = 0
    ended = /[;}]$/
    print
}
