# The logic layer: plain functions and records on the standard library alone.
set(BEXLOW_VALUES values/Conversions values/NumberText)
set(BEXLOW_LOGIC
  files/DataFile files/Lines files/Pages files/LinearCsv files/Series files/RunEntry
  link/Protocol
  config/ParameterMap
  live/Datagram
  graph/Report)
set(BEXLOW_LOGIC_HEADERS live/Strip)
