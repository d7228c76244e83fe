// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Lets two initiators share the bus. Whoever was served last waits if both ask.

module bus_arbiter (
    input logic          rst,
    soc_bus_if.target    first,
    soc_bus_if.target    second,
    soc_bus_if.initiator shared
);
    logic busy;
    logic grant_second;
    logic served_second;

    wire choose_second = second.req && (!first.req || !served_second);

    always_ff @(posedge shared.clk)
        if (rst) begin
            busy          <= 1'b0;
            grant_second  <= 1'b0;
            served_second <= 1'b0;
        end else if (!busy) begin
            busy         <= first.req || second.req;
            grant_second <= choose_second;
        end else if (shared.ack) begin
            busy          <= 1'b0;
            served_second <= grant_second;
        end

    assign shared.req   = busy;
    assign shared.we    = grant_second ? second.we : first.we;
    assign shared.addr  = grant_second ? second.addr : first.addr;
    assign shared.wdata = grant_second ? second.wdata : first.wdata;

    assign first.ack    = shared.ack && !grant_second;
    assign first.rdata  = shared.rdata;
    assign second.ack   = shared.ack && grant_second;
    assign second.rdata = shared.rdata;
endmodule
