// An outside program: builds a tiny tree through the installed package and checks it.
#include <RLXPropertyHelper.h>

#include <cstdio>
#include <cstring>

using namespace TargetOperations;

int main() {
    IStringProperty* root = StringProperty::Construct(NameAndDescription("Type", ""), "A");
    IBooleanProperty* flag = BooleanProperty::Construct(NameAndDescription("Enabled", ""), true);
    Property::AddChild(root, flag);

    int failures = 0;
    if (root->GetNumSubProperties() != 1) ++failures;
    StringProperty* asClass = CastString(root);
    if (asClass == nullptr || std::strcmp(asClass->GetValue(), "A") != 0) ++failures;
    if (asClass) asClass->Release();
    if (CastIInteger(flag) != nullptr) ++failures;
    if (RLX_INVALID_DB != 0xFFFFFFFFu) ++failures;

    // Release returns the count before the decrement: 1 means this call destroyed the tree.
    if (root->Release() != 1) ++failures;
    std::printf("consumer: %s\n", failures == 0 ? "ok" : "FAILED");
    return failures == 0 ? 0 : 1;
}
