#include "app/registry_store.h"

RegistryStore::~RegistryStore() = default;
