// What the table of runs says of a file, from its two ends alone.
#include <gtest/gtest.h>

#include "files/RunEntry.h"
#include "support/DataFiles.h"
#include "values/NumberText.h"

namespace bexlow {
namespace {

using test::Header, test::Record;

std::string Said(const std::string& text) {
  const auto tail = text.size() - std::min(text.size(), files::TailBytes);
  const auto entry = files::ReadRunEntry(text.substr(0, files::HeadBytes), text.substr(tail), text.size());
  return entry.launched + "|" + entry.serialNumber + "|" + entry.kind + "|" +
         (entry.seconds ? values::PlainNumberText(*entry.seconds) : "") + "|" +
         std::to_string(entry.lastPage) + "|" + entry.remark;
}

std::string Replaced(std::string text, const std::string& part, const std::string& by) {
  return text.replace(text.find(part), part.size(), by);
}

/// 400 pages, 741 KiB, without one of them.
std::string Without(int missing) {
  std::string text = Header();
  for (int page = 1; page <= 400; ++page)
    if (page != missing) text += Record(std::to_string(page), 264, "-177.2");
  return text;
}

std::string Recording(const std::string& kind, const std::string& samples) {
  return test::Shortened(Header("", "", kind), 9) + "Time(seconds)\r\n" + samples;
}

TEST(RunEntry, SaysWhatBothEndsProveAndNoMore) {
  const std::string launch = "2004-03-09 14:05:07|", full = Record("1", 264, "1");
  const std::string both = launch + "|Linear X and Y|";
  const std::string xOnly = launch + "|Linear X|", bin = launch + "|Bin|";
  using Row = std::tuple<const char*, std::string, std::string>;
  for (const auto& [what, text, said] :
       {Row{"one page", Header() + full, both + "17.6|1|"},
        Row{"a serial number", Replaced(Header(), "\r\n4\r\n", "\r\nSerial Number: 417\r\n") + full,
            launch + "417|Linear X and Y|17.6|1|"},
        Row{"no date", Replaced(Header(), "03/09", "13/09") + full, "||Linear X and Y|17.6|1|"},
        Row{"no frequency", Replaced(Header(), "7.5", "0") + full, both + "|1|"},
        Row{"one channel", Header("1", "1") + full, xOnly + "35.2|1|"},
        Row{"an end that was not written", Header() + full + Record("2", 264, "0", 2, "3"),
            both + "17.8666666666667|2|"},
        Row{"a missing page", Header() + full + Record("3", 264, "1"), both + "52.8|3|page 2 is missing"},
        Row{"a page twice", Header() + full + full, both + "|1|page 1 stands twice"},
        Row{"a torn record", Header() + full + "2,1,1", both + "17.6|1|ends in the middle of a record"},
        Row{"a short record", Header() + full + "2,1,1\r\n", both + "|2|the last record is damaged"},
        Row{"no page", Header(), both + "|0|holds no page"},
        Row{"a torn header", test::Shortened(Header(), 11), both + "|0|ends within its header"},
        Row{"bins", Header("0") + Record("1", 132, "9") + Record("2", 132, "9"), bin + "|2|"},
        Row{"a short bin page", Header("0") + Record("1", 131, "9"), bin + "|1|the last record is damaged"},
        Row{"a gap in the middle is not seen", Without(20), both + "7040|400|"},
        Row{"a gap near the end", Without(390), both + "7040|400|page 390 is missing"},
        Row{"a gap at the beginning", Without(1), both + "7040|400|page 1 is missing"},
        Row{"a recording", Recording("Angles", ".5,1,2\r\n3,1,2\r\n12.75,1,2\r\n1"),
            "||Angles|12.25|0|ends in the middle of a record"},
        Row{"an empty recording", Recording("Accelerometers", ""), "||Accelerometers||0|holds no sample"},
        Row{"nothing", "", "||||0|empty"},
        Row{"a picture", "\x89PNG\r\n\x1a\n", "||||0|no data file"}}) {
    SCOPED_TRACE(what);
    EXPECT_EQ(Said(text), said);
  }
}

}  // namespace
}  // namespace bexlow
