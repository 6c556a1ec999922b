#include "platform/measurement.h"

#include <langinfo.h>
#include <locale.h>

namespace carnetel {

bool LocaleIsMetric() {
  const locale_t locale = newlocale(LC_MEASUREMENT_MASK, "", nullptr);
  if (locale == nullptr) return true;
  // One byte: 1 is metric, 2 the system of the United States (ISO 30112, LC_MEASUREMENT).
  constexpr char kMetric = 1;
  const bool metric = *nl_langinfo_l(_NL_MEASUREMENT_MEASUREMENT, locale) == kMetric;
  freelocale(locale);
  return metric;
}

}  // namespace carnetel
