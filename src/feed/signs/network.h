// Hears that the machine has joined a network.
//
//     Network network;
//     poll(network.descriptor());
//     if (network.hasCome()) ...                // an address or a way out was added
#pragma once

#include "platform/system/files.h"

namespace tessary::signs {

class Network {
public:
    Network();

    /// Becomes readable when something has changed. Negative where the system tells nobody.
    int descriptor() const { return socket_.number(); }
    /// Takes in what has changed; whether a network can be there that was not.
    bool hasCome() const;

private:
    system::Descriptor socket_;
};

}  // namespace tessary::signs
