#pragma once
// An engine connected to the test database with a user-management object
// that grants every right unless told otherwise, fresh for each test.

#include "ado/connection.h"
#include "engine/eengine.h"
#include "fakeusermanagement.h"

#include <memory>

struct EngineFixture {
    std::unique_ptr<EEngine> engine;
    std::unique_ptr<FakeUserManagement> um;

    void preparar(ado::Connection& connection, int usuario = 1)
    {
        engine = std::make_unique<EEngine>();
        um = std::make_unique<FakeUserManagement>();
        engine->SetConnection(&connection, usuario);
        engine->SetUM(um.get());
    }
};
