#include "presentation/pin_message.h"

#include "presentation/palette.h"

namespace tessary::presentation {

using namespace views;

View PinMessage::body() const {
    return VStack(Alignment::leading, 6,
                  {
                      Text(heading)
                          .font(Font::system(11, Weight::medium))
                          .foreground(Palette::secondary),
                      Spacer(0),
                      Image(symbol)
                          .font(Font::system(20, Weight::medium))
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
