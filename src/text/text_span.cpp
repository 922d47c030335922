#include "text/text_span.h"

#include <algorithm>

void mergeSpans(std::vector<TextSpan>& spans) {
  if (spans.size() < 2) return;
  std::ranges::sort(spans, {}, &TextSpan::begin);
  auto last = spans.begin();
  for (auto span = last + 1; span != spans.end(); ++span) {
    if (span->begin <= last->end) {
      last->end = std::max(last->end, span->end);
    } else {
      *++last = *span;
    }
  }
  spans.erase(last + 1, spans.end());
}
