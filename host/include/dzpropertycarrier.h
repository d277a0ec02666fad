// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

class DzElement;
class DzProperty;

/// Something of an element that carries properties, such as an input of a brick.
class DzPropertyCarrier
{
public:
    /// What an undo step keeps of a carrier, so that the carrier and its properties stay in
    /// memory while they are off the element and the step may put them back.
    class Address
    {
    public:
        virtual ~Address() {}
    };

    /// The element that the carrier is a part of now; null while it is off.
    virtual DzElement* getCarrierOwner() const = 0;
    virtual std::unique_ptr<Address> makeAddress() = 0;
    /// Told after each change of a carried property's value or lock.
    virtual void carriedPropertyChanged(DzProperty* property) = 0;

protected:
    ~DzPropertyCarrier() {}
};
