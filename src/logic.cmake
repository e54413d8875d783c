# The logic layer: plain functions and records on the standard library alone.
set(BEXLOW_LOGIC
  values/Conversions values/NumberText
  files/DataFile files/Lines files/Pages files/LinearCsv files/Series files/RunEntry
  link/Protocol
  config/ParameterMap
  live/Datagram
  graph/Report)
set(BEXLOW_LOGIC_HEADERS values/LoggerValues live/Strip)
