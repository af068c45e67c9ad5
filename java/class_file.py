"""Reads of a class file what decides on which virtual machines it loads: its version, its name and
what it refers to; and the numbers that it makes known."""

import struct
from collections import namedtuple

Member = namedtuple("Member", "owner name type")
# Its numbers are its public fields of type int: by name, what the compiler puts in their place; None
# for a field that has no such constant.
ClassFile = namedtuple("ClassFile", "name version classes members tags numbers")

UTF8, CLASS, FIELD, METHOD, INTERFACE_METHOD, NAME_AND_TYPE = 1, 7, 9, 10, 11, 12
PUBLIC = 1
# The bytes behind the tag of each kind of constant, as class files of any version have them.
SIZES = {3: 4, 4: 4, 5: 8, 6: 8, 7: 2, 8: 2, 9: 4, 10: 4, 11: 4, 12: 4, 15: 3, 16: 2, 17: 4, 18: 4,
         19: 2, 20: 2}
TAKES_TWO_PLACES = (5, 6)


def read_constants(data):
    count = struct.unpack_from(">H", data, 8)[0]
    constants, offset, index = {}, 10, 1
    while index < count:
        tag = data[offset]
        if tag == UTF8:
            length = struct.unpack_from(">H", data, offset + 1)[0]
            constants[index] = (tag, data[offset + 3:offset + 3 + length].decode("utf-8", "replace"))
            offset += 3 + length
        else:
            constants[index] = (tag, data[offset + 1:offset + 1 + SIZES[tag]])
            offset += 1 + SIZES[tag]
        index += 2 if tag in TAKES_TWO_PLACES else 1
    return constants, offset


def read_fields(data, offset):
    """Yields of each field its flags, the indices of its name and type, and its attributes: the index
    of the name and the bytes of each. The offset is that of their count."""
    count = struct.unpack_from(">H", data, offset)[0]
    offset += 2
    for _ in range(count):
        flags, name, kind, attribute_count = struct.unpack_from(">HHHH", data, offset)
        offset += 8
        attributes = []
        for _ in range(attribute_count):
            attribute, length = struct.unpack_from(">HI", data, offset)
            attributes.append((attribute, data[offset + 6:offset + 6 + length]))
            offset += 6 + length
        yield flags, name, kind, attributes


def read_class(data):
    magic, minor, major = struct.unpack_from(">IHH", data)
    if magic != 0xCAFEBABE:
        raise ValueError("no class file")
    constants, end = read_constants(data)

    def text(index):
        return constants[index][1]

    def class_name(index):
        return text(struct.unpack(">H", constants[index][1])[0])

    def member(value):
        owner, pair = struct.unpack(">HH", value)
        name, kind = struct.unpack(">HH", constants[pair][1])
        return Member(class_name(owner), text(name), text(kind))

    def constant(attributes):
        for attribute, value in attributes:
            if text(attribute) == "ConstantValue":
                return struct.unpack(">i", constants[struct.unpack(">H", value)[0]][1])[0]
        return None

    interfaces = struct.unpack_from(">H", data, end + 6)[0]
    numbers = {text(field): constant(attributes)
               for flags, field, kind, attributes in read_fields(data, end + 8 + 2 * interfaces)
               if flags & PUBLIC and text(kind) == "I"}
    classes = [class_name(i) for i, (tag, _) in constants.items() if tag == CLASS]
    members = [member(value) for tag, value in constants.values()
               if tag in (FIELD, METHOD, INTERFACE_METHOD)]
    name = class_name(struct.unpack_from(">H", data, end + 2)[0])
    return ClassFile(name, (major, minor), classes, members, {tag for tag, _ in constants.values()},
                     numbers)
