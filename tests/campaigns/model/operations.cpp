// The list of all operations.
#include <stdexcept>
#include <unordered_map>

#include "campaigns/model/operation.h"

namespace model {

const Operations& operations() {
    static const Operations all = [] {
        Operations list;
        addBufferOperations(list);
        addArithmeticOperations(list);
        addImageOperations(list);
        const std::size_t first = list.size();
        addTransformOperations(list);
        for (std::size_t i = first; i < list.size(); ++i) list[i].polls = true;
        addFilterOperations(list);
        addImageFilterOperations(list);
        addWatchOperations(list);
        addArchiveOperations(list);
        addPictureOperations(list);
        addErrorOperations(list);
        for (Operation& operation : list) {
            if (!operation.topic.empty()) continue;
            for (const auto* topics : {&kPelTopics, &kFilterTopics}) {
                for (const std::string& topic : *topics) {
                    if (operation.name.ends_with(" " + topic)) operation.topic = topic;
                }
            }
        }
        return list;
    }();
    return all;
}

const Operation& operationOf(const std::string& name) {
    static const auto places = [] {
        std::unordered_map<std::string, std::size_t> map;
        for (std::size_t i = 0; i < operations().size(); ++i) map[operations()[i].name] = i;
        return map;
    }();
    const auto place = places.find(name);
    if (place == places.end()) throw std::invalid_argument("no operation: " + name);
    return operations()[place->second];
}

}  // namespace model
