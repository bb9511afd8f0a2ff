#include "TreeIndex.h"

#include <algorithm>
#include <functional>

namespace mavro {

namespace {

template <class Map, class Key>
void EraseFrom(Map& map, const Key& key, TreeNode* node) {
  const auto found = map.find(key);
  auto& nodes = found->second;
  // The node added last is usually the one to remove.
  const auto last = std::find(nodes.rbegin(), nodes.rend(), node);
  nodes.erase(std::next(last).base());
  if (nodes.empty()) map.erase(found);
}

}  // namespace

size_t TreeIndex::KeyOf(const TreeNode* parentNode, const std::string& label) {
  constexpr size_t cSpread = 0x9E3779B97F4A7C15u;
  return std::hash<const void*>()(parentNode) * cSpread ^ std::hash<std::string>()(label);
}

void TreeIndex::EnterPending() {
  for (TreeNode* node : pending) {
    if (!node) continue;
    node->pending = -1;
    byText[KeyOf(node->parent, node->text)].push_back(node);
    byData[node->data].push_back(node);
  }
  pending.clear();
}

void TreeIndex::Add(TreeNode* node) {
  node->pending = static_cast<int>(pending.size());
  pending.push_back(node);
}

void TreeIndex::Remove(TreeNode* node) {
  if (node->pending >= 0) {
    pending[static_cast<size_t>(node->pending)] = nullptr;
    node->pending = -1;
    while (!pending.empty() && !pending.back()) pending.pop_back();
    return;
  }
  EraseFrom(byText, KeyOf(node->parent, node->text), node);
  EraseFrom(byData, node->data, node);
}

void TreeIndex::RemoveTree(TreeNode* node) {
  for (auto child = node->children.rbegin(); child != node->children.rend(); ++child)
    RemoveTree(child->get());
  Remove(node);
}

void TreeIndex::Clear() {
  pending.clear();
  byText.clear();
  byData.clear();
}

TreeNode* TreeIndex::FirstChild(const TreeNode* parentNode, const std::string& label) {
  EnterPending();
  const auto found = byText.find(KeyOf(parentNode, label));
  if (found == byText.end()) return nullptr;
  TreeNode* first = nullptr;
  for (TreeNode* node : found->second)
    if (node->parent == parentNode && node->text == label && (!first || node->row < first->row))
      first = node;
  return first;
}

TreeNode* TreeIndex::FirstWithData(int data) {
  EnterPending();
  const auto found = byData.find(data);
  return found == byData.end() ? nullptr : found->second.front();
}

}  // namespace mavro
