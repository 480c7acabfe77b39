// The console's pages of what the widgets show.
//
//     const Console console{profiles};
//     console.alarms({"prod", "us-east-1"})
//         // "https://us-east-1.console.aws.amazon.com/cloudwatch/home?region=us-east-1#alarmsV2:"
//     console.alarm(link).fault().message()    // "nothing is known of a console in 'us-iso-east-1'"
//
// A page does not choose the account. Where the profile signs in with a browser, its start page
// does, and leads on to the page; for any other the person has to be signed in to the right one.
#pragma once

#include <string>

#include "feed/aws/place.h"
#include "feed/aws/profiles.h"
#include "feed/links/link.h"
#include "feed/settings/settings.h"
#include "platform/foundation/result.h"

namespace tessary::links {

using aws::Place;

class Console {
public:
    /// The AWS tools', in which a profile need not be. They have to outlive this.
    explicit Console(const aws::Profiles& profiles) : profiles_(profiles) {}

    /// Each a URL in visible ASCII.
    using Page = foundation::Result<std::string>;
    Page alarms(const Place& place) const;
    Page alarm(const AlarmLink& link) const;
    Page metric(const settings::MetricPin& pin) const;

private:
    Page page(const Place& place, const char* path, const std::string& fragment) const;

    const aws::Profiles& profiles_;
};

}  // namespace tessary::links
