#include "SyntheticDatabase.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <stdexcept>
#include <vector>

namespace rlx_bench {

namespace {

// One property of a job's subtree. Nodes are generated breadth first and written in that
// order, so every selected property stands after the one that selects it, as in real files.
struct Node {
    std::size_t parent = 0;  // index into the job's nodes; kNoParent for the job's own level
    std::size_t id = 0;      // unique over the file
    std::uint32_t keyNumber = 0;
    std::string keyName;  // the key under which the node is selected
    bool hasChildren = false;
    bool pullsSibling = false;  // its current value carries a same-level key
};

constexpr std::size_t kNoParent = static_cast<std::size_t>(-1);

std::string GroupKey(std::size_t id) { return "G_" + std::to_string(id); }
std::string SameLevelKey(std::size_t id) { return "S_" + std::to_string(id); }

void WriteKeys(std::ostream& out, const Node& node) {
    out << "      <KEYITEM><KEYNAME>" << node.keyName << "</KEYNAME><KEYNUMBER>" << node.keyNumber
        << "</KEYNUMBER></KEYITEM>\n";
    // Some properties list a second key that selects nothing here, as shared settings do.
    if (node.id % 11 == 0) {
        out << "      <KEYITEM><KEYNAME>UNUSED_" << node.id % 7 << "</KEYNAME><KEYNUMBER>" << node.id % 5
            << "</KEYNUMBER></KEYITEM>\n";
    }
}

void WriteHead(std::ostream& out, const char* element, const Node& node, const char* kind) {
    out << "    <" << element << ">\n      <NAME>Setting " << node.id << ' ' << kind << "</NAME>\n"
        << "      <DESCRIPTION>Generated " << kind << " setting " << node.id << "</DESCRIPTION>\n";
}

void WriteGroup(std::ostream& out, const Node& node) {
    if (node.id % 2 == 0) {
        WriteHead(out, "PROPERTY_STRING", node, "mode");
        out << "      <VALUE>On</VALUE>\n";
        WriteKeys(out, node);
        out << "      <ALLOWEDLIST>\n"
            << "        <ALLOWEDITEM><ALLOWED_STRING>On</ALLOWED_STRING><ALLOWED_KEY>" << GroupKey(node.id)
            << "</ALLOWED_KEY><ALLOWED_ENUM>1</ALLOWED_ENUM>";
        if (node.pullsSibling) out << "<ALLOWED_SAMELEVEL_KEY>" << SameLevelKey(node.id) << "</ALLOWED_SAMELEVEL_KEY>";
        out << "</ALLOWEDITEM>\n"
            << "        <ALLOWEDITEM><ALLOWED_STRING>Off</ALLOWED_STRING><ALLOWED_KEY>" << GroupKey(node.id)
            << "_OFF</ALLOWED_KEY><ALLOWED_ENUM>0</ALLOWED_ENUM></ALLOWEDITEM>\n"
            << "        <ALLOWEDITEM><ALLOWED_STRING>Alternative</ALLOWED_STRING>"
            << "<ALLOWED_ENUM>0x2</ALLOWED_ENUM><ALLOWED_HALT>TRUE</ALLOWED_HALT></ALLOWEDITEM>\n"
            << "      </ALLOWEDLIST>\n    </PROPERTY_STRING>\n";
    } else {
        WriteHead(out, "PROPERTY_BOOL", node, "switch");
        out << "      <VALUE>1</VALUE>\n      <CHILDKEY>" << GroupKey(node.id) << "</CHILDKEY>\n";
        WriteKeys(out, node);
        out << "    </PROPERTY_BOOL>\n";
    }
}

void WriteLeaf(std::ostream& out, const Node& node) {
    switch (node.id % 5) {
    case 0:
        WriteHead(out, "PROPERTY_INTEGER", node, "count");
        out << "      <VALUE>" << node.id % 100 << "</VALUE>\n      <RANGE_LO>0</RANGE_LO>\n"
            << "      <RANGE_HI>0xFFFF</RANGE_HI>\n      <DISPLAYTYPE>DEC</DISPLAYTYPE>\n";
        WriteKeys(out, node);
        out << "    </PROPERTY_INTEGER>\n";
        break;
    case 1:
        WriteHead(out, "PROPERTY_LOCATION", node, "address");
        out << "      <VALUE>0x" << std::hex << (0x1000 + node.id * 4) << std::dec << "</VALUE>\n"
            << "      <PAGE>" << node.id % 3 << "</PAGE>\n";
        WriteKeys(out, node);
        out << "    </PROPERTY_LOCATION>\n";
        break;
    case 2:
        WriteHead(out, "PROPERTY_LOCATION_64", node, "base");
        out << "      <VALUE>0x80000000" << std::hex << (node.id & 0xFFFF) << std::dec << "</VALUE>\n";
        WriteKeys(out, node);
        out << "    </PROPERTY_LOCATION_64>\n";
        break;
    case 3:
        WriteHead(out, "PROPERTY_STRING", node, "choice");
        out << "      <VALUE>Fast</VALUE>\n";
        WriteKeys(out, node);
        out << "      <ALLOWEDLIST>\n"
            << "        <ALLOWEDITEM><ALLOWED_STRING>Fast</ALLOWED_STRING><ALLOWED_KEY>L_" << node.id
            << "_FAST</ALLOWED_KEY><ALLOWED_ENUM>0</ALLOWED_ENUM></ALLOWEDITEM>\n"
            << "        <ALLOWEDITEM><ALLOWED_STRING>Slow</ALLOWED_STRING><ALLOWED_KEY>L_" << node.id
            << "_SLOW</ALLOWED_KEY><ALLOWED_ENUM>1</ALLOWED_ENUM></ALLOWEDITEM>\n"
            << "      </ALLOWEDLIST>\n    </PROPERTY_STRING>\n";
        break;
    default:
        WriteHead(out, "PROPERTY_BOOL", node, "flag");
        out << "      <VALUE>0</VALUE>\n      <CHILDKEY>G_" << node.id << "</CHILDKEY>\n";
        if (node.id % 17 == 4) out << "      <EDITABLE>FALSE</EDITABLE>\n";
        WriteKeys(out, node);
        out << "    </PROPERTY_BOOL>\n";
        break;
    }
}

// Breadth first: the job's key selects the first fanOut nodes, every further node is
// selected by the group key of an earlier node. Half of the sibling groups are numbered
// backwards so that linking has to insert ahead of what it already gathered.
std::vector<Node> PlanJob(const std::string& jobKey, std::size_t budget, std::size_t fanOut, std::size_t& nextId) {
    std::vector<Node> nodes;
    nodes.reserve(budget);
    std::size_t parent = kNoParent;
    std::size_t nextParent = 0;
    while (nodes.size() < budget) {
        const std::size_t siblings = std::min(fanOut, budget - nodes.size());
        const bool backwards = (parent != kNoParent && parent % 2 == 1);
        for (std::size_t i = 0; i < siblings; ++i) {
            Node node;
            node.parent = parent;
            node.id = nextId++;
            node.keyNumber = static_cast<std::uint32_t>(backwards ? siblings - i : i + 1);
            node.keyName = parent == kNoParent ? jobKey : GroupKey(nodes[parent].id);
            nodes.push_back(node);
        }
        if (parent != kNoParent) nodes[parent].hasChildren = true;
        parent = nextParent++;
    }
    // A group selector whose value carries a same-level key pulls in the next leaf among its
    // siblings, which is keyed by that same-level key instead of the parent's key.
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        Node& node = nodes[i];
        if (!node.hasChildren || node.id % 2 != 0 || node.id % 3 != 0) continue;
        for (std::size_t j = i + 1; j < nodes.size() && nodes[j].parent == node.parent; ++j) {
            if (!nodes[j].hasChildren && nodes[j].keyName == node.keyName) {
                node.pullsSibling = true;
                nodes[j].keyName = SameLevelKey(node.id);
                break;
            }
        }
    }
    return nodes;
}

}  // namespace

SyntheticDatabaseInfo WriteSyntheticDatabase(const std::string& path, const SyntheticDatabaseShape& shape) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out) throw std::runtime_error("cannot write " + path);

    const std::size_t jobs = shape.jobCount == 0 ? 1 : shape.jobCount;
    const std::size_t fanOut = shape.fanOut < 2 ? 2 : shape.fanOut;
    const std::size_t settings = shape.propertyCount > 0 ? shape.propertyCount - 1 : 0;

    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<RLX>\n  <JOB_MAJOR_V>1</JOB_MAJOR_V>\n"
        << "  <JOB_MINOR_V>0</JOB_MINOR_V>\n  <ROOT>\n"
        << "    <PROPERTY_STRING>\n      <NAME>Type</NAME>\n      <DESCRIPTION>Kind of job</DESCRIPTION>\n"
        << "      <VALUE>Job 0</VALUE>\n      <ALLOWEDLIST>\n";
    for (std::size_t job = 0; job < jobs; ++job) {
        out << "        <ALLOWEDITEM><ALLOWED_STRING>Job " << job << "</ALLOWED_STRING><ALLOWED_KEY>JOB_" << job
            << "</ALLOWED_KEY><ALLOWED_ENUM>" << job << "</ALLOWED_ENUM></ALLOWEDITEM>\n";
    }
    out << "      </ALLOWEDLIST>\n    </PROPERTY_STRING>\n";

    std::size_t nextId = 1;
    for (std::size_t job = 0; job < jobs; ++job) {
        const std::size_t budget = settings / jobs + (job < settings % jobs ? 1 : 0);
        for (const Node& node : PlanJob("JOB_" + std::to_string(job), budget, fanOut, nextId)) {
            if (node.hasChildren) {
                WriteGroup(out, node);
            } else {
                WriteLeaf(out, node);
            }
        }
    }
    out << "  </ROOT>\n</RLX>\n";
    out.close();
    if (!out) throw std::runtime_error("cannot write " + path);

    SyntheticDatabaseInfo info;
    info.propertyCount = shape.propertyCount == 0 ? 0 : settings + 1;
    info.firstJob = "Job 0";
    info.secondJob = jobs > 1 ? "Job 1" : "Job 0";
    return info;
}

}  // namespace rlx_bench
