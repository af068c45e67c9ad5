"""Compiled resources (.res) and the section of an image that holds them."""
import struct
from typing import NamedTuple


class ResourceError(Exception):
    pass


class Resource(NamedTuple):
    type: int
    name: int
    language: int
    content: bytes


def align(offset):
    return (offset + 3) // 4 * 4


def _number(data, offset):
    mark, number = struct.unpack_from("<HH", data, offset)
    if mark != 0xFFFF:
        raise ResourceError("a resource has a name that is a text")
    return number


def read(data):
    """The resources of a compiled file, which starts with an empty one."""
    found, offset = [], 0
    while offset < len(data):
        size, header_size = struct.unpack_from("<II", data, offset)
        if header_size != 32 or offset + header_size + size > len(data):
            raise ResourceError("these are no compiled resources")
        start = offset + header_size
        language, = struct.unpack_from("<H", data, offset + 22)
        found.append(Resource(_number(data, offset + 8), _number(data, offset + 12), language,
                              data[start:start + size]))
        offset = align(start + size)
    if not found or found[0] != (0, 0, 0, b"") or len(found) == 1:
        raise ResourceError("these are no compiled resources")
    places = [resource[:3] for resource in found]
    if len(set(places)) != len(places):
        raise ResourceError("a resource is there twice")
    return found[1:]


def _children(resources, depth):
    """The resources of each entry of a directory, by its number."""
    below = {}
    for resource in sorted(resources):
        below.setdefault(resource[depth], []).append(resource)
    return below


def build(resources, address):
    """The section's bytes: directories by type, name and language, descriptions, contents."""
    directories, descriptions, contents = bytearray(), [], bytearray()
    fixed_size = _size_of_directories(resources, 0) + 16 * len(resources)
    first_description = fixed_size - 16 * len(resources)

    def add(resources, depth):
        place = len(directories)
        below = _children(resources, depth)
        directories.extend(struct.pack("<IIHHHH", 0, 0, 0, 0, 0, len(below)) + bytes(8 * len(below)))
        for index, (number, inside) in enumerate(below.items()):
            target = describe(inside[0]) if depth == 2 else add(inside, depth + 1) | 1 << 31
            struct.pack_into("<II", directories, place + 16 + 8 * index, number, target)
        return place

    def describe(resource):
        place = first_description + 16 * len(descriptions)
        start = address + fixed_size + len(contents)
        descriptions.append(struct.pack("<IIII", start, len(resource.content), 0, 0))
        contents.extend(resource.content + bytes(-len(resource.content) % 4))
        return place

    add(resources, 0)
    return bytes(directories) + b"".join(descriptions) + bytes(contents)


def _size_of_directories(resources, depth):
    below = _children(resources, depth)
    size = 16 + 8 * len(below)
    if depth < 2:
        size += sum(_size_of_directories(inside, depth + 1) for inside in below.values())
    return size
