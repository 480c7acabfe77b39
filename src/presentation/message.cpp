#include "presentation/message.h"

#include <utility>

#include "presentation/palette.h"

namespace tessary::presentation {

using namespace views;

View heading(std::string text) {
    return Text(std::move(text))
        .font(Font::system(11, Weight::medium))
        .foreground(Palette::secondary);
}

View Message::body() const {
    return VStack(Alignment::leading, 6,
                  {
                      presentation::heading(heading),
                      Spacer(0),
                      Image(symbol)
                          .font(Font::system(symbolSize, Weight::medium))
                          .foreground(Palette::tertiary),
                      Text(title)
                          .font(Font::system(15, Weight::semibold))
                          .foreground(Palette::primary),
                      Text(detail)
                          .font(Font::system(11))
                          .foreground(Palette::tertiary)
                          .lineLimit(3)
                          .fixedSize(false, true),
                  })
        .frame(FlexibleFrame::unbounded(Alignment::topLeading));
}

}  // namespace tessary::presentation
