# Writes the catalogue page KESTREL_METAINFO with the addresses of this release, or without any where
# KESTREL_HOMEPAGE is empty. Also a script for `cmake -P`, beside the page.
file(READ ${CMAKE_CURRENT_LIST_DIR}/app.kestrel.Kestrel.metainfo.xml page)
set(links "")
if(KESTREL_HOMEPAGE)
  file(READ ${CMAKE_CURRENT_LIST_DIR}/metainfo_links.xml.in links)
  string(CONFIGURE "${links}" links @ONLY)
endif()
string(REGEX REPLACE "  <!-- KESTREL_LINKS:[^\n]*\n" "${links}" page "${page}")
file(WRITE ${KESTREL_METAINFO} "${page}")
