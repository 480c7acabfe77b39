// How long each step takes on the way from an alarms file to a picture: decode, derive, view,
// layout, paint, encode. One medium card at two pixels per point; type is measured once before, as
// it is in a process that renders more than one entry. `scripts/bench` runs this and a cold start
// of the program.
#include <benchmark/benchmark.h>

#include "alarms/alarms_widget_view.h"
#include "platform/drawing/cairo_painter.h"
#include "platform/drawing/png_encoder.h"
#include "platform/drawing/svg_painter.h"
#include "platform/views/layout.h"

namespace {

using namespace tessary;
using foundation::Date;

constexpr Date now{1731772840};

constexpr std::string_view document = R"({
  "schemaVersion": 1, "state": "watching", "updatedMs": 1731772800000, "intervalSeconds": 60,
  "firing": 4,
  "targets": [
    {"profile": "prod", "region": "us-east-1", "firing": 2, "authExpired": false, "failed": false},
    {"profile": "shared", "region": "us-east-1", "firing": 2, "authExpired": true, "failed": false}
  ],
  "topAlarms": [
    {"name": "api-5xx-rate-high", "profile": "prod", "region": "us-east-1", "reason": ""},
    {"name": "orders-queue-age", "profile": "prod", "region": "eu-west-1", "reason": ""},
    {"name": "ingest-lambda-errors", "profile": "shared", "region": "us-east-1", "reason": ""}
  ]
})";

alarms::AlarmsSnapshot snapshot() {
    return foundation::decodeJSON<alarms::AlarmsSnapshot>(document).value();
}
views::View view() { return alarms::alarmsWidget({now, alarms::AlarmsDisplay{snapshot(), now}}); }
drawing::PangoTypesetter& typesetter() {
    static drawing::PangoTypesetter shared{"en_US"};
    return shared;
}
views::DisplayList list() {
    views::Environment environment;
    environment.widgetFamily = views::WidgetFamily::systemMedium;
    environment.now = now;
    return views::layOut(view(), {{344, 164}, views::EdgeInsets::all(16), 22, 2}, environment,
                         typesetter());
}

void decode(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(snapshot());
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(document.size()));
}
void derive(benchmark::State& state) {
    const std::optional<alarms::AlarmsSnapshot> decoded = snapshot();
    for (auto _ : state) benchmark::DoNotOptimize(alarms::AlarmsDisplay{decoded, now});
}
void buildView(benchmark::State& state) {
    const alarms::AlarmsEntry entry{now, alarms::AlarmsDisplay{snapshot(), now}};
    for (auto _ : state) benchmark::DoNotOptimize(alarms::alarmsWidget(entry));
}
void layOut(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(list());
}
void setType(benchmark::State& state) {
    for (auto _ : state) {
        drawing::PangoTypesetter fresh{"en_US"};
        benchmark::DoNotOptimize(fresh.width("orders-queue-age", views::Font::system(12)));
    }
}
void paint(benchmark::State& state) {
    const views::DisplayList drawn = list();
    for (auto _ : state) benchmark::DoNotOptimize(drawing::paintPixels(drawn, typesetter()));
}
void encode(benchmark::State& state) {
    const drawing::Pixels pixels = drawing::paintPixels(list(), typesetter());
    for (auto _ : state) benchmark::DoNotOptimize(drawing::encodePNG(pixels));
    state.counters["bytes"] = static_cast<double>(drawing::encodePNG(pixels).size());
}
void writeSVG(benchmark::State& state) {
    const views::DisplayList drawn = list();
    for (auto _ : state) benchmark::DoNotOptimize(drawing::paintSVG(drawn, typesetter()));
}

BENCHMARK(decode)->Unit(benchmark::kMicrosecond);
BENCHMARK(derive)->Unit(benchmark::kMicrosecond);
BENCHMARK(buildView)->Unit(benchmark::kMicrosecond);
BENCHMARK(layOut)->Unit(benchmark::kMicrosecond);
BENCHMARK(setType)->Unit(benchmark::kMicrosecond);
BENCHMARK(paint)->Unit(benchmark::kMicrosecond);
BENCHMARK(encode)->Unit(benchmark::kMicrosecond);
BENCHMARK(writeSVG)->Unit(benchmark::kMicrosecond);

}  // namespace
