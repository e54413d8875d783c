# The logic layer: plain functions and records on the standard library alone.
set(BEXLOW_LOGIC
  live/Conversions live/NumberText live/Datagram live/Strip
  link/Protocol link/LaunchProgress
  config/ParameterMap config/CalibrationMath
  download/DataFile download/Lines download/PageDecoder download/LinearCsv
  graph/Series graph/BinPages graph/RunFacts graph/ViewNumbers
  review/ButtonPushes)
set(BEXLOW_LOGIC_HEADERS live/LiveSample config/OnBoardParameters)
