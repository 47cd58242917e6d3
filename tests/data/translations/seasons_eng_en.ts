<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name></name>
    <message>
        <source>Autumn</source>
        <translation>Autumn (engineering)</translation>
    </message>
    <message>
        <source>Winter</source>
        <translation>Winter (engineering)</translation>
    </message>
    <message>
        <source>Spring</source>
        <translation></translation>
    </message>
</context>
</TS>
