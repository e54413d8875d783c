# Makes one page of the manual, to be read without a network: its pictures and its style are in it.
#
# cmake -D CMARK_GFM=PROGRAM -D MANUAL=FILE -D STYLE=FILE -D PAGE=FILE -P manual.cmake
execute_process(COMMAND ${CMARK_GFM} --extension table --to html ${MANUAL}
  OUTPUT_VARIABLE body COMMAND_ERROR_IS_FATAL ANY)

# Headings get the names by which the text links to them: "Set up and launch" is #set-up-and-launch.
string(REGEX MATCHALL "<h[23]>[^\n]*</h[23]>" headings "${body}")
foreach(heading IN LISTS headings)
  string(REGEX REPLACE "<[^>]*>" "" name "${heading}")
  string(TOLOWER "${name}" name)
  string(REGEX REPLACE "[^a-z0-9 -]" "" name "${name}")
  string(REPLACE " " "-" name "${name}")
  string(SUBSTRING "${heading}" 0 3 opening)
  string(REPLACE "${opening}>" "${opening} id=\"${name}\">" named "${heading}")
  string(REPLACE "${heading}" "${named}" body "${body}")
endforeach()

get_filename_component(folder ${MANUAL} DIRECTORY)
string(REGEX MATCHALL "src=\"pictures/[^\"]*\"" pictures "${body}")
list(REMOVE_DUPLICATES pictures)
foreach(picture IN LISTS pictures)
  string(REGEX REPLACE "^src=\"(.*)\"$" "\\1" path "${picture}")
  execute_process(COMMAND base64 --wrap=0 ${folder}/${path} OUTPUT_VARIABLE bytes COMMAND_ERROR_IS_FATAL ANY)
  string(REPLACE "${picture}" "src=\"data:image/png;base64,${bytes}\"" body "${body}")
endforeach()

file(READ ${STYLE} style)
file(WRITE ${PAGE} "<!doctype html>
<html lang=\"en\">
<head>
<meta charset=\"utf-8\">
<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">
<title>Bexlow - Software Help Manual</title>
<style>
${style}</style>
</head>
<body>
<main>
${body}</main>
</body>
</html>
")
