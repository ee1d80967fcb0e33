#include "commands/NewBoard.h"

#include "board/documents/schema/AbilitySchema.h"
#include "board/documents/schema/ClockSchema.h"
#include "board/documents/schema/FileSystemSchema.h"
#include "board/documents/schema/HardwareSchema.h"
#include "board/documents/schema/MachineSchema.h"
#include "board/documents/schema/MonitorSchema.h"
#include "board/documents/schema/PackageSchema.h"
#include "board/gpio/GPIODevice.h"
#include "print/Console.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <pugixml.hpp>
#include <sstream>
#include <vector>

namespace {

using Values = std::vector<std::string>;
using Node = pugi::xml_node;

constexpr char INDENT[] = "    ";

std::string text(int number) { return std::to_string(number); }

void writeFile(const std::filesystem::path& path, const std::string& content) {
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    std::ofstream file(path);
    if (!(file << content << std::flush)) {
        throw CommandError(path.string() + " cannot be written: " + std::strerror(errno));
    }
}

/// An element, whose fields take the values in the order of the schema.
Node add(Node parent, const ElementSchema& schema, const Values& values = {}) {
    Node node = parent.append_child(schema.name);
    const FieldSchema* field = schema.fields.begin();
    for (const std::string& value : values) {
        node.append_attribute((field++)->name) = value.c_str();
    }
    return node;
}

/// One of the kind of which the parent has a list.
Node addItem(Node parent, const ElementSchema& schema, const Values& values) {
    return add(parent, *schema.children.begin(), values);
}

/// A document of XML, whose root and comment are written here.
class Document {
public:
    Document(const DocumentSchema& schema, const std::string& comment) : m_Schema(schema) {
        Node declaration = m_Document.append_child(pugi::node_declaration);
        declaration.append_attribute("version") = "1.0";
        declaration.append_attribute("encoding") = "UTF-8";
        m_Document.append_child(pugi::node_comment).set_value((" " + comment + " ").c_str());
        root = add(m_Document, schema.root);
    }

    void write(const std::string& directory) const {
        std::ostringstream content;
        m_Document.save(content, INDENT);
        writeFile(directory + m_Schema.path, content.str());
    }

    Node root;

private:
    const DocumentSchema& m_Schema;
    pugi::xml_document m_Document;
};

std::string section(const ElementSchema& schema, const Values& values) {
    std::string lines = "[" + std::string(schema.name) + "]\n";
    const FieldSchema* field = schema.fields.begin();
    for (const std::string& value : values) {
        lines += std::string((field++)->name) + " = " + value + "\n";
    }
    return lines;
}

void writeTexts(const std::string& directory) {
    writeFile(directory + MachineSchema::DOCUMENT.path,
              "# What the factory writes about the machine.\n" +
                  section(MachineSchema::MACHINE, {"Board Makers", "New Board", "NB-0001", "A1"}));
    writeFile(directory + PackageSchema::DOCUMENT.path,
              "# The installed software, and by name the versions of its components.\n" +
                  section(PackageSchema::PACKAGE, {"recorder", "0.1.0"}) + "\n" +
                  section(PackageSchema::COMPONENTS, {}) + "hardware-service = " + NVRHW_VERSION +
                  "\n");
}

void writeSystem(const std::string& directory) {
    Document files(FileSystemSchema::DOCUMENT, "The file systems that the recorder supports.");
    const Node list = add(files.root, FileSystemSchema::SECTION);
    addItem(list, FileSystemSchema::SECTION, {"1", "ext4", "0", "true", "true"});
    addItem(list, FileSystemSchema::SECTION, {"2", "vfat", "2048", "true", "false"});
    files.write(directory);
    Document clock(ClockSchema::DOCUMENT, "The real-time clock.");
    add(clock.root, ClockSchema::DEVICE, {ClockSchema::DEFAULT_DEVICE, "true"});
    clock.write(directory);
}

/// The banks' files, and the inputs and then the outputs on them, spread evenly.
void writeLines(const std::string& directory, const NewBoard& board) {
    using Schema = HardwareSchema;
    Document document(Schema::DOCUMENT, "The alarm inputs and outputs, in the order of their lines."
                                        " Optional: debounce (ms), bias and drive.");
    const Node inputs = add(document.root, Schema::INPUTS);
    const Node outputs = add(document.root, Schema::OUTPUTS);
    const int all = board.inputs + board.outputs;
    int line = 0;
    for (int bank = 0; bank < board.banks; ++bank) {
        const std::string folder = directory + GPIODevice::PATH + "/" + text(bank);
        std::filesystem::create_directories(folder);
        for (int bit = 0; line < all * (bank + 1) / board.banks; ++bit, ++line) {
            const bool isInput = line < board.inputs;
            const std::string id = text(isInput ? line + 1 : line - board.inputs + 1);
            addItem(isInput ? inputs : outputs, isInput ? Schema::INPUTS : Schema::OUTPUTS,
                    {id, text(bank), text(bit), "1", (isInput ? "input " : "output ") + id});
            writeFile(folder + "/" + text(bit), "0\n");
        }
    }
    document.write(directory);
}

constexpr char MONITOR_TYPE[] = "1"; // HDMI
constexpr char RESOLUTION[] = "1";   // of that type

void addMonitors(Node root, const NewBoard& board) {
    using Schema = AbilitySchema;
    const Node resolutions = add(root, Schema::RESOLUTIONS);
    addItem(resolutions, Schema::RESOLUTIONS, {MONITOR_TYPE, "0", "1280x720", "1280", "720"});
    addItem(resolutions, Schema::RESOLUTIONS,
            {MONITOR_TYPE, RESOLUTION, "1920x1080", "1920", "1080"});
    for (int monitor = 0; monitor < board.monitors; ++monitor) {
        const Node group =
            add(add(root, Schema::MONITORS, {text(monitor)}), Schema::GROUP, {MONITOR_TYPE});
        addItem(group, Schema::GROUP, {"0"});
        addItem(group, Schema::GROUP, {RESOLUTION});
    }
}

void addLayouts(Node root) {
    using Schema = AbilitySchema;
    const Node layouts = add(root, Schema::LAYOUTS);
    const Node decoding = add(root, Schema::DECODING);
    const int pictures[] = {1, 4, 9, 16};
    for (int id = 0; id < 4; ++id) {
        addItem(layouts, Schema::LAYOUTS, {text(id), text(pictures[id])});
        const Node group = add(add(decoding, Schema::DECODED, {text(id)}), Schema::WINDOW_GROUP);
        addItem(group, Schema::WINDOW_GROUP, {"1920", "1080", "1080p"});
        const Node windows = add(group, Schema::WINDOWS);
        for (int window = 0; window < pictures[id]; ++window) {
            addItem(windows, Schema::WINDOWS, {text(window)});
        }
    }
}

void writeAbilities(const std::string& directory, const NewBoard& board) {
    using Schema = AbilitySchema;
    Document document(Schema::DOCUMENT,
                      "What the recorder can do. Keep the numbers consistent with the lists.");
    const Node root = document.root;
    add(root, Schema::CHANNELS, {"16", "16", "131072", "2"});
    add(root, Schema::DISPATCH, {"16"});
    add(root, Schema::PLAYBACK, {"4"});
    add(root, Schema::INTERPHONE, {"false"});
    add(root, Schema::ALARMS, {text(board.inputs), text(board.outputs)});
    addMonitors(root, board);
    addLayouts(root);
    const Node card = add(add(root, Schema::NETWORK, {"1"}), Schema::CARD, {"0"});
    addItem(card, Schema::CARD, {"1", "independent", "true", "false", "true", "true", "false"});
    document.write(directory);
}

void writeMonitors(const std::string& directory, const NewBoard& board) {
    Document document(MonitorSchema::DOCUMENT,
                      "The parameters of the display outputs; the recorder changes this file.");
    const Node list = add(document.root, MonitorSchema::SECTION);
    for (int monitor = 0; monitor < board.monitors; ++monitor) {
        addItem(list, MonitorSchema::SECTION,
                {text(monitor), MONITOR_TYPE, RESOLUTION, "true", "0", "0", "1920", "1080", "60",
                 "50"});
    }
    document.write(directory);
}

} // namespace

void NewBoard::write(const std::string& directory) const {
    writeTexts(directory);
    writeSystem(directory);
    writeLines(directory, *this);
    writeAbilities(directory, *this);
    writeMonitors(directory, *this);
}
