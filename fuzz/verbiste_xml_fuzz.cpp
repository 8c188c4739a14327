// The Verbiste reader on arbitrary bytes read as either file: it must never crash, and whatever
// it accepts must hold together (named templates, verbs with both fields, stems that are a prefix
// of their infinitive).

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "dict/verbiste_xml.h"
#include "fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  const std::string_view xml(reinterpret_cast<const char*>(data), size);
  if (auto verbs = vesko::parseVerbisteVerbs(xml)) {
    for (const auto& v : *verbs) {
      VESKO_FUZZ_CHECK(!v.infinitive.empty() && !v.templateName.empty(), xml);
      if (auto stem = vesko::verbisteStem(v.infinitive, v.templateName)) {
        VESKO_FUZZ_CHECK(v.infinitive.starts_with(*stem), xml);
      }
    }
  }
  if (auto templates = vesko::parseVerbisteTemplates(xml)) {
    for (const auto& t : *templates) {
      VESKO_FUZZ_CHECK(!t.name.empty(), xml);
      for (const auto& e : t.endings) {
        VESKO_FUZZ_CHECK(static_cast<std::size_t>(e.tense) < vesko::kFrenchTenses, xml);
      }
    }
  }
  return 0;
}
