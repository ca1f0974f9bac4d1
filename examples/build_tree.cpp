// Builds the property tree of a small breakpoint job through the class interface, changes
// a few values as a debugger would, and prints the tree before and after.
#include <RLXPropertyHelper.h>

#include <cinttypes>
#include <cstdio>
#include <string>
#include <vector>

using namespace TargetOperations;

namespace {

std::string Describe(IProperty* node) {
    char buffer[128];
    if (IBooleanProperty* b = CastIBoolean(node)) {
        std::string text = b->GetValue() ? "bool  = true" : "bool  = false";
        b->Release();
        return text;
    }
    if (IIntegerProperty* i = CastIInteger(node)) {
        std::uint64_t low = 0, high = 0;
        i->HasAllowedRange(low, high);
        std::snprintf(buffer, sizeof buffer, "int   = %" PRIu64 " (range %" PRIu64 "..%" PRIu64 ")", i->GetValue(),
                      low, high);
        i->Release();
        return buffer;
    }
    if (ILocationProperty2* l = CastILocation2(node)) {
        std::uint32_t page = 0;
        std::snprintf(buffer, sizeof buffer, "loc64 = 0x%016" PRIx64 " page %u", l->GetValue64(page).GetAddress(), page);
        l->Release();
        return buffer;
    }
    if (ILocationProperty* l = CastILocation(node)) {
        std::uint32_t page = 0;
        std::snprintf(buffer, sizeof buffer, "loc   = 0x%08x page %u", l->GetValue(page), page);
        l->Release();
        return buffer;
    }
    if (IStringProperty* s = CastIString(node)) {
        std::string text = std::string("text  = \"") + s->GetValue() + "\"";
        std::uint32_t count = 0;
        if (s->HasAllowedValues(count)) {
            std::vector<const char*> allowed(count);
            s->GetAllowedValues(allowed.data());
            text += " of {";
            for (std::uint32_t k = 0; k < count; ++k) text += (k ? ", " : "") + std::string(allowed[k]);
            text += "}";
        }
        s->Release();
        return text;
    }
    return "group";
}

void Print(IProperty* node, const std::string& indent) {
    std::printf("%s%-22s %s%s\n", indent.c_str(), node->GetName(), Describe(node).c_str(),
                node->IsDisabled() ? "  [disabled]" : "");
    std::vector<IProperty*> children;
    Property::GetSubProperties(node, children);
    for (IProperty* child : children) {
        Print(child, indent + "  ");
        child->Release();
    }
}

}  // namespace

int main() {
    std::vector<std::string> kinds = {"Breakpoint", "Watchpoint"};
    std::vector<ValueAttribute> attributes = {ValueAttribute("BP", 1, 0, true, ""),
                                              ValueAttribute("WP", 2, 0, false, "")};
    IStringProperty* type = StringProperty::Construct(NameAndDescription("Type", "Job kind"), "Breakpoint", kinds,
                                                      attributes);

    IBooleanProperty* halt = BooleanProperty::Construct(NameAndDescription("Halt", "Halt the CPU"), true);
    IBooleanProperty* haltCore0 = BooleanProperty::Construct(NameAndDescription("Core 0", ""), true);
    IBooleanProperty* haltCore1 = BooleanProperty::Construct(NameAndDescription("Core 1", ""), true);
    Property::AddChild(halt, haltCore0);
    Property::AddChild(halt, haltCore1);

    ILocationProperty2* address = LocationProperty2::Construct(NameAndDescription("Address", ""), 0x80001000ull);
    IIntegerProperty* count = IntegerProperty::Construct(NameAndDescription("Pass count", ""), 1, true);
    if (IntegerProperty* counter = CastInteger(count)) {
        counter->SetAllowedRange(1, 255);
        counter->Release();
    }

    Property::AddChild(type, address);
    Property::AddChild(type, count);
    Property::AddChild(type, halt);

    std::printf("Job as created:\n");
    Print(type, "  ");

    // Edits as a debugger's user makes them; values outside the rules are dropped silently.
    type->SetValue("Watchpoint");
    address->SetValue64(0x1234567890ull, 0);
    count->SetValue(1000);  // outside 1..255: ignored
    count->SetValue(16);
    haltCore0->SetValue(false);
    haltCore1->SetValue(false);  // the last true child switches the group off

    std::printf("\nAfter editing:\n");
    Print(type, "  ");

    type->Release();  // frees the whole tree
    return 0;
}
